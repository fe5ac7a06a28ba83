// The serial-port control over the terminal device itself. The device is opened here, not through
// the serial-port library: the library takes another program's lock file for a stale one by rules
// of its own and removes it, and its lock files cannot be left out. The locks are serial_lock.h's.
#include "channels/serial_port_control.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/ioctl.h>
#include <termios.h>
#include <unistd.h>
#include <QSocketNotifier>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <thread>

#include "channels/posix/device_access.h"
#include "channels/posix/device_line.h"
#include "channels/posix/line_format.h"
#include "channels/posix/serial_lock.h"
#include "channels/serial_device.h"
#include "platform/file_handles.h"
#include "platform/host_text.h"
#include "platform/posix/file_errors.h"
#include "platform/posix/line_speed.h"
#include "platform/write_stall.h"

namespace lumbra {
namespace {

// One wait for the device to take more bytes: short, so that a stop signal is seen at once.
constexpr std::chrono::milliseconds kWriteStep{200};
// One look at the driver's queue while it drains: a write returns soon after its last byte left.
constexpr std::chrono::milliseconds kDrainStep{1};

// The driver's code for a rate that has one; 0 for those that have none (14400, 28800 ...).
speed_t StandardSpeed(std::int32_t baud) {
    switch (baud) {
        case 110:
            return B110;
        case 300:
            return B300;
        case 600:
            return B600;
        case 1200:
            return B1200;
        case 2400:
            return B2400;
        case 4800:
            return B4800;
        case 9600:
            return B9600;
        case 19200:
            return B19200;
        case 38400:
            return B38400;
        case 57600:
            return B57600;
        case 115200:
            return B115200;
        default:
            return 0;
    }
}

// Gives the line tio with the speed baud: as its standard code where it has one, which every
// program reads back; a custom rate only for the rates without one.
bool SetLine(int fd, termios tio, std::int32_t baud) {
    const speed_t code = StandardSpeed(baud);
    if (code != 0 && (::cfsetispeed(&tio, code) != 0 || ::cfsetospeed(&tio, code) != 0))
        return false;
    if (::tcsetattr(fd, TCSANOW, &tio) != 0) return false;
    return code != 0 || platform::SetDeviceLineSpeed(fd, baud);
}

std::string ErrText(int err, const std::string& hostPath) {
    return platform::ErrDescription(platform::FileErrorFromErrno(err, hostPath));
}

}  // namespace

// The device while the port holds it open.
struct SerialPortControl::Line {
    Line() = default;
    // The descriptor goes first, its flock with it; the lock file after it.
    ~Line() {
        readable.reset();
        if (fd >= 0) ::close(fd);
    }
    Line(const Line&) = delete;
    Line& operator=(const Line&) = delete;

    int fd = -1;
    std::string hostPath;
    SerialLock lock;
    // The line as the port found it, and whether the port's own settings took.
    termios found{};
    bool set = false;
    std::unique_ptr<QSocketNotifier> readable;
};

SerialPortControl::SerialPortControl() = default;

SerialPortControl::~SerialPortControl() {
    if (portOpen()) closeLine();
}

bool SerialPortControl::openLine(const std::string& path) {
    if (std::string problem = DeviceAccessProblem(commPort_, path); !problem.empty())
        return fail(std::move(problem));
    const std::string label = PortLabel(commPort_, path) + " ";
    auto line = std::make_unique<Line>();
    line->hostPath = platform::HostPath(path);
    const std::string& host = line->hostPath;
    if (!line->lock.takeFile(host)) return fail(label + line->lock.inUse());
    // Without waiting for a modem line's carrier, and without becoming the program's terminal.
    do {
        line->fd = ::open(host.c_str(), O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC);
    } while (line->fd < 0 && errno == EINTR);
    if (line->fd < 0) {
        const int err = errno;
        // Another program opened the device for itself alone.
        if (err == EBUSY) {
            const std::string holder = DeviceLockHolder(host);
            return fail(label + (holder.empty() ? "em uso por outro programa" : holder));
        }
        return fail(label + "n\xE3o pode ser aberta: " + ErrText(err, host));
    }
    if (!line->lock.takeDevice(line->fd, host)) return fail(label + line->lock.inUse());
    if (::tcgetattr(line->fd, &line->found) != 0)
        return fail(label + "n\xE3o pode ser aberta: " + ErrText(errno, host));
    // As long as the port holds the device, other programs cannot open it (root excepted).
    ::ioctl(line->fd, TIOCEXCL);

    line->readable = std::make_unique<QSocketNotifier>(line->fd, QSocketNotifier::Read);
    QObject::connect(line->readable.get(), &QSocketNotifier::activated, line->readable.get(),
                     [this] { receivePending(); });
    line_ = std::move(line);
    openPath_ = path;
    return true;
}

void SerialPortControl::closeLine() {
    Line& line = *line_;
    // Closed by an OnComm handler, the port keeps the notifier that is calling until that call
    // has returned.
    if (receiving_) {
        line.readable->setEnabled(false);
        line.readable.release()->deleteLater();
    }
    line.readable.reset();
    // The line as it was found, with the speed and format it was used at; refused settings leave
    // it exactly as found.
    termios back = line.found;
    if (line.set) {
        SetLineFormat(back, settings_);
        SetLine(line.fd, back, settings_.baud);
    } else {
        ::tcsetattr(line.fd, TCSANOW, &back);
    }
    ::ioctl(line.fd, TIOCNXCL);
    line_.reset();
    openPath_.clear();
}

bool SerialPortControl::applySettings() {
    const std::string label = PortLabel(commPort_, openPath_);
    const std::string refused = label + " recusou a configura\xE7\xE3o \"" + settingsText_ + "\": ";
    std::string why;
    if (!SettingsDeviceCanUse(settings_, why)) return fail(refused + why);

    const int fd = line_->fd;
    const std::int32_t baud = settings_.baud;
    termios tio{};
    if (::tcgetattr(fd, &tio) != 0) return fail(refused + ErrText(errno, line_->hostPath));
    // Bytes pass unchanged both ways, the line is used whatever its carrier says, and a read
    // never waits.
    ::cfmakeraw(&tio);
    tio.c_cflag |= CLOCAL | CREAD;
    tio.c_cc[VMIN] = 0;
    tio.c_cc[VTIME] = 0;
    SetLineFormat(tio, settings_);
    if (!SetLine(fd, tio, baud)) return fail(refused + ErrText(errno, line_->hostPath));

    // A driver may take a rate it cannot make without complaint: believe only what it runs at.
    const std::int64_t actual = platform::DeviceLineSpeed(fd);
    if (actual < 0) return fail(refused + "a velocidade n\xE3o pode ser lida");
    if (std::llabs(actual - baud) * 50 > baud) {
        return fail(refused + "funciona a " + std::to_string(actual) + " baud em vez de " +
                    std::to_string(baud));
    }
    termios taken{};
    if (::tcgetattr(fd, &taken) != 0) return fail(refused + ErrText(errno, line_->hostPath));
    if (!LineFormatTaken(taken, settings_, IsPseudoTerminal(fd)))
        return fail(refused +
                    "o dispositivo n\xE3o aceita este formato de car\xE1"
                    "cter");
    line_->set = true;
    return true;
}

std::intptr_t SerialPortControl::nativeHandle() const {
    return line_ ? line_->fd : -1;
}

bool SerialPortControl::writeAll(const std::string& bytes) {
    const std::string label = PortLabel(commPort_, openPath_);
    const int fd = line_->fd;
    // What the device did not take must not leave later, behind the user's back.
    const auto giveUp = [&](std::string why) {
        ::tcflush(fd, TCOFLUSH);
        return fail(std::move(why));
    };
    platform::WriteWatch watch(bytes.size());
    std::size_t done = 0;
    for (;;) {
        if (done < bytes.size()) {
            const ssize_t put = ::write(fd, bytes.data() + done, bytes.size() - done);
            if (put > 0) {
                done += static_cast<std::size_t>(put);
            } else if (put < 0 && errno != EAGAIN && errno != EINTR) {
                const int err = errno;
                if (DeviceHungUp(fd)) return giveUp(label + " foi desligada durante a escrita");
                return giveUp(label + ": " + ErrText(err, line_->hostPath));
            }
        }
        // Taken means written to the device and out of the driver's queue.
        const std::size_t left = bytes.size() - done + static_cast<std::size_t>(QueuedOutput(fd));
        watch.taken(bytes.size() - std::min(left, bytes.size()));
        if (left == 0 && !TransmitterBusy(fd)) return true;
        if (watch.stopped())
            return giveUp(label + ": " + platform::ErrDescription(platform::kErrUserInterrupt));
        if (watch.stalled()) return giveUp(label + ": " + watch.stallText());
        if (done == bytes.size()) {
            std::this_thread::sleep_for(kDrainStep);
            continue;
        }
        pollfd p{fd, POLLOUT, 0};
        ::poll(&p, 1, static_cast<int>(watch.nextWait(kWriteStep).count()));
    }
}

void SerialPortControl::receivePending() {
    Line& line = *line_;
    std::string got;
    char chunk[512];
    for (;;) {
        const ssize_t n = ::read(line.fd, chunk, sizeof chunk);
        if (n > 0) {
            got.append(chunk, static_cast<std::size_t>(n));
            continue;
        }
        if (n < 0 && errno == EINTR) continue;
        // A raw line reads 0 when it has nothing now; a device that has hung up has nothing more
        // to give, and is not watched any longer.
        if ((n < 0 && errno != EAGAIN) || DeviceHungUp(line.fd)) {
            if (line.readable) line.readable->setEnabled(false);
        }
        break;
    }
    // Last: an OnComm handler may close the port.
    arrived(got);
}

}  // namespace lumbra
