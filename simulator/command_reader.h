#pragma once
// What both virtual devices read their bytes with: whole commands decoded as the bytes come, a
// command cut between two pieces kept until its remaining bytes arrive, and the commands a device
// does not know gathered into one event for each run of them. However the bytes are cut on
// arrival, the events are the same.

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "simulator/device_event.h"

namespace lumbra::sim {

class CommandReader {
  public:
    virtual ~CommandReader() = default;
    CommandReader(const CommandReader&) = delete;
    CommandReader& operator=(const CommandReader&) = delete;

    // Decodes bytes; the events of what they completed, in order. A run of unknown bytes stays
    // open across calls: its event comes once something else is decoded, or at finish().
    std::vector<DeviceEvent> feed(std::string_view bytes);
    // The end of a burst: the event of the unknown bytes it ended with, if any.
    std::vector<DeviceEvent> finish();

  protected:
    explicit CommandReader(Device device) : device_(device) {}

    // For decodeOne: the event of a command it decoded.
    void report(DeviceEvent event);
    // For decodeOne: the bytes of a command the device does not know; gives their count.
    std::size_t skip(std::string_view bytes);

  private:
    // Decodes the command at the start of in: the bytes it takes, 0 while it needs more than in
    // holds. What it decides may depend only on the bytes it takes (the bytes after them change
    // nothing), and it takes something once in is as long as the device's longest command, so
    // that a cut piece decodes as a whole one and the bytes kept between pieces stay few.
    virtual std::size_t decodeOne(std::string_view in) = 0;
    // Decodes whole commands from the front of in; the bytes they took.
    std::size_t decodeFrom(std::string_view in);
    void endRun();

    Device device_;
    std::string pending_;  // a command cut at the end of the last piece
    std::vector<DeviceEvent> out_;
    std::string run_;  // the first bytes of the run of unknown bytes
    std::size_t runMore_ = 0;
    bool runOpen_ = false;
    bool skipped_ = false;  // the command being decoded was skipped
};

}  // namespace lumbra::sim
