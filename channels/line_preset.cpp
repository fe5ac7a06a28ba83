#include "channels/line_preset.h"

#include <fcntl.h>
#include <termios.h>
#include <unistd.h>

#include "channels/line_format.h"
#include "platform/line_speed.h"

namespace lumbra {

void PresetLine(const std::string& hostPath, const SerialSettings& settings) {
    // Without blocking on a modem line that has no carrier, and without becoming its terminal.
    const int fd = ::open(hostPath.c_str(), O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC);
    if (fd < 0) return;
    termios tio{};
    if (::tcgetattr(fd, &tio) == 0) {
        SetLineFormat(tio, settings);
        if (::tcsetattr(fd, TCSANOW, &tio) == 0) platform::SetDeviceLineSpeed(fd, settings.baud);
    }
    ::close(fd);
}

}  // namespace lumbra
