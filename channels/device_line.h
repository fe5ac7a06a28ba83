#pragma once
// What the driver of an open serial device can tell about its line: the speed it really runs at,
// whether its output has left, whether the device is still there. These work on the descriptor a
// port holds, so they see the device as the kernel does, not as the port object remembers it.

#include <chrono>
#include <cstdint>

namespace lumbra {

// The output speed in baud that the driver now uses on fd; -1 when it cannot be read.
std::int64_t DeviceLineSpeed(int fd);
// Asks the driver of fd for baud in both directions, any rate; false when it refuses.
bool SetDeviceLineSpeed(int fd, std::int64_t baud);

enum class DrainResult { Drained, TimedOut };

// Waits until the driver's output queue is empty and, where the driver can tell, the transmitter
// has sent its last bit. Polls instead of calling tcdrain, which can block for ever on a device
// held by flow control: gives TimedOut when deadline passes first. A driver that cannot report
// its queue counts as drained.
DrainResult DrainOutput(int fd, std::chrono::steady_clock::time_point deadline);

// True when the device behind fd has hung up (unplugged, or the far end of a pseudo-terminal
// closed).
bool DeviceHungUp(int fd);

}  // namespace lumbra
