#include "simulator/pty/virtual_device.h"

namespace lumbra::sim {

VirtualDevice::VirtualDevice(Device kind, const LineSettings& expected, CodePage charset)
    : kind_(kind), port_(expected), watch_(kind, expected), display_(charset) {}

std::vector<DeviceEvent> VirtualDevice::pump() {
    const LineSettings line = port_.lineSettings();
    const std::string bytes = port_.readAvailable();
    std::vector<DeviceEvent> events;
    if (bytes.empty()) return events;
    if (auto mismatch = watch_.observe(line)) events.push_back(std::move(*mismatch));
    std::vector<DeviceEvent> decoded =
        kind_ == Device::Printer ? printer_.feed(bytes) : display_.feed(bytes);
    events.insert(events.end(), std::make_move_iterator(decoded.begin()),
                  std::make_move_iterator(decoded.end()));
    changed_ = true;
    return events;
}

std::optional<DeviceEvent> VirtualDevice::endBurst() {
    if (kind_ != Device::Display || !changed_) return std::nullopt;
    changed_ = false;
    return display_.screen();
}

}  // namespace lumbra::sim
