#pragma once
// A pseudo-terminal standing in for a device's serial port. The sender opens the slave by its path
// as it would open /dev/ttyS0; the device reads the master. The port keeps a descriptor of the
// slave itself, so that the sender may open and close it any number of times without the master
// seeing a hang-up in between, and the line keeps its settings from one open to the next.

#include <cstddef>
#include <string>

#include "simulator/line_settings.h"

namespace lumbra::sim {

inline constexpr std::size_t kReadChunk = 4096;

class VirtualPort {
  public:
    // Opens a new pseudo-terminal whose line rests at settings (raw, the speed and stop bits;
    // a pseudo-terminal has 8 data bits and no parity whatever is asked). Throws
    // std::system_error when the system gives none.
    explicit VirtualPort(const LineSettings& settings);
    ~VirtualPort();
    VirtualPort(const VirtualPort&) = delete;
    VirtualPort& operator=(const VirtualPort&) = delete;

    // "/dev/pts/5".
    const std::string& path() const { return path_; }
    int masterFd() const { return master_; }

    // Bytes the sender wrote that were not read yet, at most kReadChunk of them, so that a sender
    // that never stops is read in pieces that each cost little; "" when none.
    std::string readAvailable();
    // The settings the sender put on the line, as the terminal driver holds them now.
    LineSettings lineSettings() const;

  private:
    int master_ = -1;
    int slave_ = -1;
    std::string path_;
};

}  // namespace lumbra::sim
