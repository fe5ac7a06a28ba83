#pragma once
// The speed of a terminal line as its driver holds it, as a number of baud: any rate, not only
// those with a B constant. Serial ports check what they set through here, and the virtual devices
// read what a sender set.

#include <cstdint>

namespace lumbra::platform {

// The output speed in baud that the driver now uses on fd; -1 when it cannot be read.
std::int64_t DeviceLineSpeed(int fd);
// Asks the driver of fd for baud in both directions, any rate; false when it refuses.
bool SetDeviceLineSpeed(int fd, std::int64_t baud);

}  // namespace lumbra::platform
