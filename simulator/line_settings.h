#pragma once
// The line settings a device expects and those the sender opened the port with, in the settings
// text of the parameter files ("9600,n,8,1"). A real device run at other settings shows garbage,
// so a virtual device reports the difference as an event of its own.

#include <cstdint>
#include <optional>
#include <string>

#include "simulator/device_event.h"

namespace lumbra::sim {

struct LineSettings {
    std::int64_t baud = 9600;
    char parity = 'n';
    int dataBits = 8;
    int stopBits = 1;
    friend bool operator==(const LineSettings&, const LineSettings&) = default;
};

// "9600,n,8,1".
std::string SettingsText(const LineSettings& settings);

// Reports the settings the sender uses when they differ from the expected ones: once for each
// change, so that a run of sends at the same wrong settings is one event, not one per send.
class SettingsWatch {
  public:
    SettingsWatch(Device device, LineSettings expected) : device_(device), expected_(expected) {}

    const LineSettings& expected() const { return expected_; }
    std::optional<DeviceEvent> observe(const LineSettings& actual);

  private:
    Device device_;
    LineSettings expected_;
    std::optional<LineSettings> reported_;
};

}  // namespace lumbra::sim
