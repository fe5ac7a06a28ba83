#include "channels/serial_port_control.h"

#include <termios.h>
#include <QSerialPort>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <thread>

#include "channels/device_line.h"
#include "channels/line_format.h"
#include "channels/line_preset.h"
#include "channels/serial_device.h"
#include "channels/serial_lock.h"
#include "platform/file_handles.h"
#include "platform/host_text.h"
#include "platform/line_speed.h"
#include "platform/program.h"
#include "platform/qt_codepage.h"
#include "platform/write_stall.h"

namespace lumbra {
namespace {

// The receive buffer of the design; older bytes give way when more arrive unread, so a chattering
// device can neither fill memory nor stall a write.
constexpr qint64 kInputBufferSize = 1024;
// One wait for the device to take more bytes: short, so that a stop signal is seen at once.
constexpr std::chrono::milliseconds kWriteStep{200};
// One look at the driver's queue while it drains: a write returns soon after its last byte left.
constexpr std::chrono::milliseconds kDrainStep{1};

std::string QtError(const QSerialPort& port) {
    return platform::ToCp1252(port.errorString());
}

}  // namespace

SerialPortControl::SerialPortControl() : port_(std::make_unique<QSerialPort>()) {
    QObject::connect(port_.get(), &QSerialPort::readyRead, port_.get(), [this] { onReadyRead(); });
}

SerialPortControl::~SerialPortControl() {
    if (port_->isOpen()) port_->close();
}

void SerialPortControl::copyDesignFrom(const SerialPortControl& other) {
    commPort_ = other.commPort_;
    settingsText_ = other.settingsText_;
    settings_ = other.settings_;
    portProblem_ = other.portProblem_;
    settingsProblem_ = other.settingsProblem_;
    inputLen_ = other.inputLen_;
    rThreshold_ = other.rThreshold_;
}

bool SerialPortControl::setCommPort(std::int16_t port) {
    if (port < 1 || port > 9) {
        portProblem_ = "Port number " + std::to_string(port) + " is outside 1..9";
        return fail(portProblem_);
    }
    if (portOpen() && port != commPort_) {
        portProblem_ = "Port " + std::to_string(commPort_) +
                       " is open: close it before choosing port " + std::to_string(port);
        return fail(portProblem_);
    }
    commPort_ = port;
    portProblem_.clear();
    return true;
}

bool SerialPortControl::setSettings(const std::string& text) {
    SerialSettings read;
    std::string why;
    if (!ParseSerialSettings(text, read, why)) {
        settingsProblem_ = why;
        return fail(why);
    }
    settings_ = read;
    settingsText_ = text;
    settingsProblem_.clear();
    if (portOpen() && !applySettings()) {
        settingsProblem_ = error_;
        return false;
    }
    return true;
}

bool SerialPortControl::portOpen() const {
    return port_->isOpen();
}

int SerialPortControl::descriptor() const {
    return port_->isOpen() ? port_->handle() : -1;
}

bool SerialPortControl::setPortOpen(bool open) {
    if (!open) {
        if (!portOpen()) return fail("Port " + std::to_string(commPort_) + " is not open");
        port_->close();
        openPath_.clear();
        return true;
    }

    if (portOpen()) return fail("Port " + std::to_string(commPort_) + " is already open");
    if (!portProblem_.empty()) return fail(portProblem_);
    if (!settingsProblem_.empty()) return fail(settingsProblem_);

    const std::string path = SerialDevicePath(commPort_, platform::CommandLine());
    const std::string label = PortLabel(commPort_, path);
    if (std::string problem = DeviceAccessProblem(commPort_, path); !problem.empty())
        return fail(std::move(problem));

    const std::string host = platform::HostPath(path);
    RemoveStaleSerialLocks(host);
    // A line that another running program holds is never touched: its open fails below and
    // names the holder.
    if (SerialLockHolder(host).empty()) PresetLine(host, settings_);
    port_->setPortName(QString::fromStdString(host));
    port_->clearError();
    if (!port_->open(QIODevice::ReadWrite)) {
        // The node exists and this user may use it (checked above), so a refusal on the grounds
        // of permission is the lock another program holds.
        if (port_->error() == QSerialPort::PermissionError) {
            const std::string holder = SerialLockHolder(host);
            return fail(label + " is in use by " +
                        (holder.empty() ? std::string("another program") : holder));
        }
        return fail(label + " cannot be opened: " + QtError(*port_));
    }
    openPath_ = path;
    commEvent_ = comEvNone;
    if (!applySettings()) {
        const std::string why = error_;
        port_->close();
        openPath_.clear();
        return fail(why);
    }
    return true;
}

bool SerialPortControl::applySettings() {
    const std::string label = PortLabel(commPort_, openPath_);
    const std::string refused = label + " refused the settings \"" + settingsText_ + "\": ";
    std::string why;
    if (!SettingsDeviceCanUse(settings_, why)) return fail(refused + why);

    const std::int32_t baud = settings_.baud;
    if (!port_->setBaudRate(baud)) return fail(refused + QtError(*port_));
    // A driver may take a rate it cannot make without complaint: believe only what it runs at.
    const std::int64_t actual = platform::DeviceLineSpeed(port_->handle());
    if (actual < 0) return fail(refused + "its speed cannot be read back");
    if (std::llabs(actual - baud) * 50 > baud) {
        return fail(refused + "it runs at " + std::to_string(actual) + " baud instead of " +
                    std::to_string(baud));
    }

    // QSerialPort's own setters read the flags back and refuse whatever a pseudo-terminal
    // forces, so the format goes to the driver directly and is checked here.
    const int fd = port_->handle();
    termios tio{};
    if (::tcgetattr(fd, &tio) != 0) return fail(refused + std::strerror(errno));
    SetLineFormat(tio, settings_);
    if (::tcsetattr(fd, TCSANOW, &tio) != 0) return fail(refused + std::strerror(errno));
    termios taken{};
    if (::tcgetattr(fd, &taken) != 0) return fail(refused + std::strerror(errno));
    if (!LineFormatTaken(taken, settings_, IsPseudoTerminal(fd)))
        return fail(refused + "the device does not support this character format");
    return true;
}

bool SerialPortControl::output(const std::string& bytes) {
    if (!portOpen()) return fail("Port " + std::to_string(commPort_) + " is not open");
    if (!portProblem_.empty()) return fail(portProblem_);
    if (!settingsProblem_.empty()) return fail(settingsProblem_);
    if (bytes.empty()) return true;

    const std::string label = PortLabel(commPort_, openPath_);
    auto giveUp = [&](std::string why) {
        // What the device did not take must not leave later, behind the user's back.
        port_->clear(QSerialPort::Output);
        port_->clearError();
        return fail(std::move(why));
    };

    port_->clearError();
    const auto size = static_cast<qint64>(bytes.size());
    if (port_->write(bytes.data(), size) != size) return giveUp(describeWriteFailure(label));
    // Taken means out of the program's buffer and out of the driver's queue.
    platform::WriteWatch watch(bytes.size());
    for (;;) {
        const qint64 pending = port_->bytesToWrite();
        const auto left = static_cast<std::size_t>(pending) +
                          static_cast<std::size_t>(QueuedOutput(port_->handle()));
        watch.taken(bytes.size() - std::min(left, bytes.size()));
        if (left == 0 && !TransmitterBusy(port_->handle())) return true;
        if (watch.stopped()) {
            return giveUp(
                label + " write stopped: " + platform::ErrDescription(platform::kErrUserInterrupt));
        }
        if (watch.stalled()) return giveUp(label + " stopped taking data: " + watch.stallText());
        if (pending == 0) {
            std::this_thread::sleep_for(kDrainStep);
            continue;
        }
        if (port_->waitForBytesWritten(static_cast<int>(watch.nextWait(kWriteStep).count())))
            continue;
        const auto error = port_->error();
        if (error != QSerialPort::NoError && error != QSerialPort::TimeoutError)
            return giveUp(describeWriteFailure(label));
        port_->clearError();
    }
}

std::string SerialPortControl::describeWriteFailure(const std::string& label) const {
    if (DeviceHungUp(port_->handle())) return label + " was disconnected during the write";
    return label + " write failed: " + QtError(*port_);
}

std::string SerialPortControl::input() {
    const qint64 available = port_->bytesAvailable();
    const qint64 take = inputLen_ > 0 ? std::min<qint64>(inputLen_, available) : available;
    const QByteArray got = port_->read(take);
    return std::string(got.constData(), static_cast<std::size_t>(got.size()));
}

std::int64_t SerialPortControl::inBufferCount() const {
    return port_->bytesAvailable();
}

bool SerialPortControl::fail(std::string why) {
    error_ = std::move(why);
    return false;
}

void SerialPortControl::onReadyRead() {
    const qint64 excess = port_->bytesAvailable() - kInputBufferSize;
    if (excess > 0) port_->skip(excess);
    if (rThreshold_ > 0 && port_->bytesAvailable() >= rThreshold_) {
        commEvent_ = comEvReceive;
        if (onComm_) onComm_();
    }
}

}  // namespace lumbra
