#pragma once
// What the driver of an open serial device can tell about its line: the speed it really runs at,
// whether its output has left, whether the device is still there. These work on the descriptor a
// port holds, so they see the device as the kernel does, not as the port object remembers it.

#include <cstdint>

namespace lumbra {

// The output speed in baud that the driver now uses on fd; -1 when it cannot be read.
std::int64_t DeviceLineSpeed(int fd);
// Asks the driver of fd for baud in both directions, any rate; false when it refuses.
bool SetDeviceLineSpeed(int fd, std::int64_t baud);

// Bytes the driver still holds in its output queue for fd; 0 when the driver cannot say.
int QueuedOutput(int fd);
// True while the transmitter still sends its last bits; false when it is empty or the driver cannot
// say (only UART drivers can).
bool TransmitterBusy(int fd);

// True when the device behind fd has hung up (unplugged, or the far end of a pseudo-terminal
// closed).
bool DeviceHungUp(int fd);

}  // namespace lumbra
