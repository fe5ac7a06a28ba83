#include "channels/serial_port_control.h"

#include <termios.h>
#include <QSerialPort>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <cstring>

#include "channels/device_line.h"
#include "channels/line_format.h"
#include "channels/line_preset.h"
#include "channels/serial_device.h"
#include "platform/host_text.h"
#include "platform/program.h"
#include "platform/qt_codepage.h"

namespace lumbra {
namespace {

// The receive buffer of the design; older bytes give way when more arrive unread, so a chattering
// device can neither fill memory nor stall a write.
constexpr qint64 kInputBufferSize = 1024;
// One wait for the device to take more bytes; the write as a whole is bounded by writeTimeout.
constexpr std::chrono::milliseconds kWriteStep{200};
constexpr std::chrono::milliseconds kStartGrace{2000};

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

    PresetLine(platform::HostPath(path), settings_);
    port_->setPortName(QString::fromStdString(platform::HostPath(path)));
    port_->clearError();
    if (!port_->open(QIODevice::ReadWrite)) {
        // The node exists and this user may use it (checked above), so a refusal on the grounds
        // of permission is the lock another program holds.
        if (port_->error() == QSerialPort::PermissionError)
            return fail(label + " is in use by another program");
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
    const std::int64_t actual = DeviceLineSpeed(port_->handle());
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
    const auto limit = writeTimeout(bytes.size());
    const auto deadline = std::chrono::steady_clock::now() + limit;
    const std::string tooSlow = label + " did not take the data within " +
                                std::to_string((limit.count() + 999) / 1000) + " s";
    auto giveUp = [&](std::string why) {
        // What the device did not take must not leave later, behind the user's back.
        port_->clear(QSerialPort::Output);
        port_->clearError();
        return fail(std::move(why));
    };

    port_->clearError();
    const auto size = static_cast<qint64>(bytes.size());
    if (port_->write(bytes.data(), size) != size) return giveUp(describeWriteFailure(label));
    while (port_->bytesToWrite() > 0) {
        const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(
            deadline - std::chrono::steady_clock::now());
        if (left.count() <= 0) return giveUp(tooSlow);
        if (port_->waitForBytesWritten(static_cast<int>(std::min(left, kWriteStep).count())))
            continue;
        const auto error = port_->error();
        if (error != QSerialPort::NoError && error != QSerialPort::TimeoutError)
            return giveUp(describeWriteFailure(label));
        port_->clearError();
    }
    if (DrainOutput(port_->handle(), deadline) == DrainResult::TimedOut) return giveUp(tooSlow);
    return true;
}

std::string SerialPortControl::describeWriteFailure(const std::string& label) const {
    if (DeviceHungUp(port_->handle())) return label + " was disconnected during the write";
    return label + " write failed: " + QtError(*port_);
}

std::chrono::milliseconds SerialPortControl::writeTimeout(std::size_t count) const {
    if (fixedWriteTimeout_) return *fixedWriteTimeout_;
    const std::int64_t bitsPerChar = 1 + settings_.dataBits +
                                     (settings_.parity == SerialParity::None ? 0 : 1) +
                                     (settings_.stopBits == SerialStopBits::One ? 1 : 2);
    const auto lineMs = static_cast<std::int64_t>(count) * bitsPerChar * 2000 / settings_.baud;
    return kStartGrace + std::chrono::milliseconds(lineMs);
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
