#pragma once
// What the driver of an open serial device can tell about its line (its speed:
// platform/line_speed.h): whether its output has left, whether the device is still there. These
// work on the descriptor a port holds, so they see the device as the kernel does, not as the port
// object remembers it.

#include <cstdint>

namespace lumbra {

// Bytes the driver still holds in its output queue for fd; 0 when the driver cannot say.
int QueuedOutput(int fd);
// True while the transmitter still sends its last bits; false when it is empty or the driver cannot
// say (only UART drivers can).
bool TransmitterBusy(int fd);

// True when the device behind fd has hung up (unplugged, or the far end of a pseudo-terminal
// closed).
bool DeviceHungUp(int fd);

}  // namespace lumbra
