#pragma once
// Serves virtual devices until told to stop: waits for bytes on their ports and hands the events
// on as they come, in batches of what one read gave, the display's screen once a burst of bytes
// is over.

#include <chrono>
#include <functional>
#include <vector>

#include "simulator/pty/virtual_device.h"

namespace lumbra::sim {

// Quiet time that ends a burst: the bytes of one send arrive well within it.
inline constexpr std::chrono::milliseconds kBurstQuiet{30};

// Serves devices until stopFd becomes readable (a self-pipe written by a signal handler); false
// when waiting failed for another reason. emit gets each batch in order, maybe empty.
bool ServeDevices(const std::vector<VirtualDevice*>& devices,
                  const std::function<void(const std::vector<DeviceEvent>&)>& emit, int stopFd);

}  // namespace lumbra::sim
