#pragma once
// One serial-port control: the object a serial channel drives. It carries the properties the
// program sets (CommPort, Settings, PortOpen, Output) and those of the host form's test panel
// (Input, InputLen, RThreshold, CommEvent, the OnComm event) over a QSerialPort.
//
// A setting the control cannot take is not lost: the control remembers why and refuses to open or
// send until it is set again correctly, so the reason reaches the user at the next open.
// Operations that can fail return false and leave the reason in errorText().

#include <cstdint>
#include <functional>
#include <memory>
#include <string>

#include "channels/serial_settings.h"

class QSerialPort;

namespace lumbra {

// CommEvent values: what the last OnComm event was about.
inline constexpr std::int16_t comEvNone = 0;
inline constexpr std::int16_t comEvReceive = 2;

class SerialPortControl {
  public:
    SerialPortControl();
    ~SerialPortControl();
    SerialPortControl(const SerialPortControl&) = delete;
    SerialPortControl& operator=(const SerialPortControl&) = delete;

    // Takes the port number, settings and receive properties of other (a new control array
    // element starts as a copy of element 1). The port stays closed.
    void copyDesignFrom(const SerialPortControl& other);

    std::int16_t commPort() const { return commPort_; }
    // Ports 1..9. Refused while the port is open, unless the number stays the same.
    bool setCommPort(std::int16_t port);

    const std::string& settings() const { return settingsText_; }
    // The settings the port runs with while open, or will open with.
    const SerialSettings& lineSettings() const { return settings_; }
    // "baud,parity,data,stop". Taken by the device at once when the port is open, else at open.
    bool setSettings(const std::string& text);

    bool portOpen() const;
    // Opens the device of commPort() (SerialDevicePath over the program's command line) with the
    // settings, or closes it. Opening an open port or closing a closed one is an error. Stale lock
    // files of the device are removed first (serial_lock.h); a port another process holds is
    // refused naming that process where its lock tells.
    bool setPortOpen(bool open);

    // Sends bytes unchanged and returns when they have left the program: written to the device
    // and drained from its output queue. A device that takes no byte for the write stall limit
    // (platform/write_stall.h), or a stop signal, ends the write with a failure; what the device
    // did not take is dropped.
    bool output(const std::string& bytes);

    // Takes inputLen() bytes (all when 0) out of the receive buffer.
    std::string input();
    std::int16_t inputLen() const { return inputLen_; }
    void setInputLen(std::int16_t n) { inputLen_ = n; }

    // With 1 or more, arriving bytes raise OnComm with CommEvent comEvReceive; 0 raises nothing.
    std::int16_t rThreshold() const { return rThreshold_; }
    void setRThreshold(std::int16_t n) { rThreshold_ = n; }
    std::int16_t commEvent() const { return commEvent_; }
    void setOnComm(std::function<void()> handler) { onComm_ = std::move(handler); }
    // Bytes received and not yet taken by input().
    std::int64_t inBufferCount() const;

    // The device path the open port uses ("" when closed) and its descriptor (-1 when closed).
    const std::string& devicePath() const { return openPath_; }
    int descriptor() const;
    QSerialPort& port() { return *port_; }

    const std::string& errorText() const { return error_; }

  private:
    bool fail(std::string why);
    bool applySettings();
    std::string describeWriteFailure(const std::string& label) const;
    void onReadyRead();

    std::unique_ptr<QSerialPort> port_;
    std::int16_t commPort_ = 1;
    std::string settingsText_ = "9600,n,8,1";
    SerialSettings settings_;
    // Why the last CommPort or Settings could not be taken; blocks open and output while set.
    std::string portProblem_;
    std::string settingsProblem_;
    std::int16_t inputLen_ = 0;
    std::int16_t rThreshold_ = 0;
    std::int16_t commEvent_ = comEvNone;
    std::function<void()> onComm_;
    std::string openPath_;
    std::string error_;
};

}  // namespace lumbra
