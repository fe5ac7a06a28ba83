#include "channels/serial_device.h"

namespace lumbra {

std::string DefaultSerialDevice(std::int16_t port) {
    return "COM" + std::to_string(port);
}

}  // namespace lumbra
