// Kept in a file of its own: the kernel's termios2, which holds the speed as a number and so
// takes rates without a B constant (14400, 28800 ...), cannot share a file with the C library's
// <termios.h>.
#include <asm/termbits.h>
#include <sys/ioctl.h>

#include "platform/posix/line_speed.h"

namespace lumbra::platform {

std::int64_t DeviceLineSpeed(int fd) {
    struct termios2 tio {};
    if (::ioctl(fd, TCGETS2, &tio) != 0) return -1;
    // The kernel keeps c_ospeed in step with the CBAUD code, whichever way the speed was set.
    return static_cast<std::int64_t>(tio.c_ospeed);
}

bool SetDeviceLineSpeed(int fd, std::int64_t baud) {
    struct termios2 tio {};
    if (::ioctl(fd, TCGETS2, &tio) != 0) return false;
    tio.c_cflag &= ~static_cast<tcflag_t>(CBAUD | (CBAUD << IBSHIFT));
    tio.c_cflag |= BOTHER | (BOTHER << IBSHIFT);
    tio.c_ospeed = static_cast<speed_t>(baud);
    tio.c_ispeed = static_cast<speed_t>(baud);
    return ::ioctl(fd, TCSETS2, &tio) == 0;
}

}  // namespace lumbra::platform
