#pragma once
// One serial-port control: the object a serial channel drives. It carries the properties the
// program sets (CommPort, Settings, PortOpen, Output) and those of the host form's test panel
// (Input, InputLen, RThreshold, CommEvent, the OnComm event).
//
// The properties and their rules are the same everywhere (serial_port_control.cpp); the device
// beneath is the system's own: the terminal device on Linux (posix/), the communications functions
// on Windows (win32/).
//
// A setting the control cannot take is not lost: the control remembers why and refuses to open or
// send until it is set again correctly, so the reason reaches the user at the next open.
// Operations that can fail return false and leave the reason in errorText().

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "channels/serial_settings.h"

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

    bool portOpen() const { return line_ != nullptr; }
    // Opens the device of commPort() (SerialDevicePath over the program's command line) with the
    // settings, or closes it. Opening an open port or closing a closed one is an error. A device
    // another program holds is refused, saying so, and is neither opened nor touched; while open,
    // the port holds the device against other programs.
    //
    // On Linux, a lock file or flock of another program holds the device, and the port holds it in
    // both ways itself (posix/serial_lock.h); closing leaves the line as the port found it, except
    // for the speed and character format it used, which the next program reads as it does any
    // other (a standard speed as its standard code, never as a custom rate). On Windows the system
    // gives a port to one program at a time.
    bool setPortOpen(bool open);

    // Sends bytes unchanged and returns when they have left the program: written to the device
    // and drained from its output queue. A device that takes no byte for the write stall limit
    // (platform/write_stall.h), or a stop signal, ends the write with a failure; what the device
    // did not take is dropped.
    bool output(const std::string& bytes);

    // Takes inputLen() bytes (all when 0) out of the receive buffer, after receivePending().
    std::string input();
    std::int16_t inputLen() const { return inputLen_; }
    void setInputLen(std::int16_t n) { inputLen_ = n; }

    // With 1 or more, arriving bytes raise OnComm with CommEvent comEvReceive; 0 raises nothing.
    std::int16_t rThreshold() const { return rThreshold_; }
    void setRThreshold(std::int16_t n) { rThreshold_ = n; }
    std::int16_t commEvent() const { return commEvent_; }
    void setOnComm(std::function<void()> handler) { onComm_ = std::move(handler); }
    // Bytes received and not yet taken by input(), after receivePending().
    std::int64_t inBufferCount();

    // Takes what the device has sent by now, without waiting, into the receive buffer (of which
    // the last 1024 bytes are kept), raising OnComm as arriving bytes do. On Linux the event loop
    // calls it whenever bytes arrive; on Windows it runs when the program asks for its input
    // (input(), inBufferCount()).
    void receivePending();

    // The device path the open port uses ("" when closed), and the system's handle of it: the
    // descriptor on Linux, the HANDLE on Windows; -1 when closed.
    const std::string& devicePath() const { return openPath_; }
    std::intptr_t nativeHandle() const;

    const std::string& errorText() const { return error_; }

  private:
    // The device while the port holds it open, as each system keeps it.
    struct Line;

    bool fail(std::string why);
    // Puts bytes that arrived into the receive buffer and raises OnComm when they reach the
    // threshold.
    void arrived(std::string_view bytes);

    // Each system's side: opens path into line_ (and openPath_), closes it, gives the open device
    // the settings, writes and drains. Each returns false after fail() with the reason.
    bool openLine(const std::string& path);
    void closeLine();
    bool applySettings();
    bool writeAll(const std::string& bytes);

    std::unique_ptr<Line> line_;
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
    bool receiving_ = false;  // inside OnComm
    std::string received_;    // the receive buffer
    std::string openPath_;
    std::string error_;
};

}  // namespace lumbra
