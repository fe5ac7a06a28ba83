#include "simulator/line_settings.h"

namespace lumbra::sim {

std::string SettingsText(const LineSettings& settings) {
    return std::to_string(settings.baud) + "," + settings.parity + "," +
           std::to_string(settings.dataBits) + "," + std::to_string(settings.stopBits);
}

std::optional<DeviceEvent> SettingsWatch::observe(const LineSettings& actual) {
    if (actual == expected_) {
        reported_.reset();
        return std::nullopt;
    }
    if (reported_ == actual) return std::nullopt;
    reported_ = actual;
    DeviceEvent e;
    e.device = device_;
    e.kind = EventKind::Settings;
    e.expected = SettingsText(expected_);
    e.actual = SettingsText(actual);
    return e;
}

}  // namespace lumbra::sim
