#include "channels/posix/device_line.h"

#include <poll.h>
#include <sys/ioctl.h>
#include <termios.h>

namespace lumbra {

int QueuedOutput(int fd) {
    int queued = 0;
    if (::ioctl(fd, TIOCOUTQ, &queued) != 0 || queued < 0) return 0;
    return queued;
}

bool TransmitterBusy(int fd) {
    unsigned int lsr = 0;
    if (::ioctl(fd, TIOCSERGETLSR, &lsr) != 0) return false;
    return (lsr & TIOCSER_TEMT) == 0;
}

bool DeviceHungUp(int fd) {
    pollfd p{fd, POLLOUT, 0};
    if (::poll(&p, 1, 0) < 0) return false;
    return (p.revents & (POLLHUP | POLLERR | POLLNVAL)) != 0;
}

}  // namespace lumbra
