// The properties of a serial-port control and their rules, the same on every system; the device
// work beneath them is each system's (posix/, win32/).
#include "channels/serial_port_control.h"

#include <algorithm>
#include <utility>

#include "channels/serial_device.h"
#include "platform/program.h"

namespace lumbra {
namespace {

// The receive buffer of the design; older bytes give way when more arrive unread, so a chattering
// device can neither fill memory nor stall a write.
constexpr std::size_t kInputBufferSize = 1024;

std::string NotOpen(std::int16_t port) {
    return "Porta " + std::to_string(port) + " n\xE3o est\xE1 aberta";
}

}  // namespace

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
        portProblem_ = "N\xFAmero de porta " + std::to_string(port) + " fora de 1..9";
        return fail(portProblem_);
    }
    if (portOpen() && port != commPort_) {
        portProblem_ = "Porta " + std::to_string(commPort_) +
                       " aberta: feche-a antes de escolher a porta " + std::to_string(port);
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

bool SerialPortControl::setPortOpen(bool open) {
    if (!open) {
        if (!portOpen()) return fail(NotOpen(commPort_));
        closeLine();
        return true;
    }

    if (portOpen()) return fail("Porta " + std::to_string(commPort_) + " j\xE1 est\xE1 aberta");
    if (!portProblem_.empty()) return fail(portProblem_);
    if (!settingsProblem_.empty()) return fail(settingsProblem_);
    if (!openLine(SerialDevicePath(commPort_, platform::CommandLine()))) return false;
    received_.clear();
    commEvent_ = comEvNone;
    if (!applySettings()) {
        const std::string why = error_;
        closeLine();
        return fail(why);
    }
    return true;
}

bool SerialPortControl::output(const std::string& bytes) {
    if (!portOpen()) return fail(NotOpen(commPort_));
    if (!portProblem_.empty()) return fail(portProblem_);
    if (!settingsProblem_.empty()) return fail(settingsProblem_);
    if (bytes.empty()) return true;
    return writeAll(bytes);
}

std::string SerialPortControl::input() {
    if (portOpen()) receivePending();
    // An OnComm handler may have closed the port meanwhile.
    if (!portOpen()) return {};
    const std::size_t take = inputLen_ > 0
                                 ? std::min(static_cast<std::size_t>(inputLen_), received_.size())
                                 : received_.size();
    std::string got = received_.substr(0, take);
    received_.erase(0, take);
    return got;
}

std::int64_t SerialPortControl::inBufferCount() {
    if (portOpen()) receivePending();
    return portOpen() ? static_cast<std::int64_t>(received_.size()) : 0;
}

bool SerialPortControl::fail(std::string why) {
    error_ = std::move(why);
    return false;
}

void SerialPortControl::arrived(std::string_view bytes) {
    if (bytes.empty()) return;
    received_.append(bytes);
    if (received_.size() > kInputBufferSize)
        received_.erase(0, received_.size() - kInputBufferSize);
    // A handler that asks for input while it runs takes what is there, without a second event.
    if (receiving_ || rThreshold_ <= 0 || received_.size() < static_cast<std::size_t>(rThreshold_))
        return;
    commEvent_ = comEvReceive;
    receiving_ = true;
    if (onComm_) onComm_();
    receiving_ = false;
}

}  // namespace lumbra
