#include "simulator/pty/virtual_device.h"

#include <iterator>

namespace lumbra::sim {

VirtualDevice::VirtualDevice(Device kind, const LineSettings& expected, CodePage charset)
    : kind_(kind), port_(expected), watch_(kind, expected), display_(charset) {}

CommandReader& VirtualDevice::decoder() {
    if (kind_ == Device::Printer) return printer_;
    return display_;
}

std::vector<DeviceEvent> VirtualDevice::pump() {
    const LineSettings line = port_.lineSettings();
    const std::string bytes = port_.readAvailable();
    std::vector<DeviceEvent> events;
    if (bytes.empty()) return events;
    if (auto mismatch = watch_.observe(line)) events.push_back(std::move(*mismatch));
    std::vector<DeviceEvent> decoded = decoder().feed(bytes);
    events.insert(events.end(), std::make_move_iterator(decoded.begin()),
                  std::make_move_iterator(decoded.end()));
    changed_ = true;
    return events;
}

std::vector<DeviceEvent> VirtualDevice::endBurst() {
    std::vector<DeviceEvent> events = decoder().finish();
    if (kind_ == Device::Display && changed_) events.push_back(display_.screen());
    changed_ = false;
    return events;
}

}  // namespace lumbra::sim
