#include "channels/device_line.h"

#include <poll.h>
#include <sys/ioctl.h>
#include <termios.h>

#include <thread>

namespace lumbra {
namespace {

// Short enough that a write returns soon after the last byte left, long enough not to spin.
constexpr std::chrono::milliseconds kPollStep{1};

// Bytes still queued in the driver; -1 when the driver cannot say.
int QueuedBytes(int fd) {
    int queued = 0;
    if (::ioctl(fd, TIOCOUTQ, &queued) != 0) return -1;
    return queued;
}

// 1 when the transmitter is empty, 0 while it still sends, -1 when the driver cannot say (only
// UART drivers can).
int TransmitterEmpty(int fd) {
    unsigned int lsr = 0;
    if (::ioctl(fd, TIOCSERGETLSR, &lsr) != 0) return -1;
    return (lsr & TIOCSER_TEMT) != 0 ? 1 : 0;
}

}  // namespace

DrainResult DrainOutput(int fd, std::chrono::steady_clock::time_point deadline) {
    while (QueuedBytes(fd) > 0) {
        if (std::chrono::steady_clock::now() >= deadline) return DrainResult::TimedOut;
        std::this_thread::sleep_for(kPollStep);
    }
    while (TransmitterEmpty(fd) == 0) {
        if (std::chrono::steady_clock::now() >= deadline) return DrainResult::TimedOut;
        std::this_thread::sleep_for(kPollStep);
    }
    return DrainResult::Drained;
}

bool DeviceHungUp(int fd) {
    pollfd p{fd, POLLOUT, 0};
    if (::poll(&p, 1, 0) < 0) return false;
    return (p.revents & (POLLHUP | POLLERR | POLLNVAL)) != 0;
}

}  // namespace lumbra
