#include "channels/serial_device.h"

namespace lumbra {

std::string DefaultSerialDevice(std::int16_t port) {
    return "/dev/ttyS" + std::to_string(port - 1);
}

}  // namespace lumbra
