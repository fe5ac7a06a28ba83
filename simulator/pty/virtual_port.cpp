#include "simulator/pty/virtual_port.h"

#include <fcntl.h>
#include <termios.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <system_error>

#include "platform/posix/line_speed.h"

namespace lumbra::sim {
namespace {

[[noreturn]] void Fail(const char* what) {
    throw std::system_error(errno, std::generic_category(), what);
}

}  // namespace

VirtualPort::VirtualPort(const LineSettings& settings) {
    master_ = ::posix_openpt(O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC);
    if (master_ < 0) Fail("posix_openpt");
    try {
        if (::grantpt(master_) != 0 || ::unlockpt(master_) != 0) Fail("unlockpt");
        char name[128];
        if (::ptsname_r(master_, name, sizeof name) != 0) Fail("ptsname_r");
        path_ = name;
        slave_ = ::open(name, O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC);
        if (slave_ < 0) Fail("open slave");

        termios tio{};
        if (::tcgetattr(slave_, &tio) != 0) Fail("tcgetattr");
        ::cfmakeraw(&tio);
        tio.c_cflag |= CLOCAL | CREAD;
        if (settings.stopBits == 2)
            tio.c_cflag |= CSTOPB;
        else
            tio.c_cflag &= ~static_cast<tcflag_t>(CSTOPB);
        if (::tcsetattr(slave_, TCSANOW, &tio) != 0) Fail("tcsetattr");
        if (!platform::SetDeviceLineSpeed(slave_, settings.baud)) Fail("line speed");
    } catch (...) {
        if (slave_ >= 0) ::close(slave_);
        ::close(master_);
        throw;
    }
}

VirtualPort::~VirtualPort() {
    ::close(slave_);
    ::close(master_);
}

std::string VirtualPort::readAvailable() {
    std::string bytes(kReadChunk, '\0');
    for (;;) {
        const ssize_t n = ::read(master_, bytes.data(), bytes.size());
        if (n < 0 && errno == EINTR) continue;
        // EAGAIN: nothing for now. EIO cannot come while the port holds the slave open.
        bytes.resize(n > 0 ? static_cast<std::size_t>(n) : 0);
        return bytes;
    }
}

LineSettings VirtualPort::lineSettings() const {
    // The master's terminal settings are the slave's: what the sender set there.
    LineSettings s;
    termios tio{};
    if (::tcgetattr(master_, &tio) != 0) return s;
    s.baud = platform::DeviceLineSpeed(master_);
    s.parity = (tio.c_cflag & PARENB) == 0 ? 'n' : (tio.c_cflag & PARODD) != 0 ? 'o' : 'e';
    switch (tio.c_cflag & CSIZE) {
        case CS5:
            s.dataBits = 5;
            break;
        case CS6:
            s.dataBits = 6;
            break;
        case CS7:
            s.dataBits = 7;
            break;
        default:
            s.dataBits = 8;
            break;
    }
    s.stopBits = (tio.c_cflag & CSTOPB) != 0 ? 2 : 1;
    return s;
}

}  // namespace lumbra::sim
