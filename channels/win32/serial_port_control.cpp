// The serial-port control over the Windows communications functions: the port opened by name in
// the device space for itself alone, its line set from a device-control block built from the
// settings text, every transfer overlapped so that no wait outlasts a short step.
#include "channels/serial_port_control.h"

#include <windows.h>

#include <algorithm>
#include <chrono>
#include <utility>

#include "channels/serial_device.h"
#include "platform/file_handles.h"
#include "platform/win32/wide_text.h"
#include "platform/win32/win32_errors.h"
#include "platform/write_stall.h"

namespace lumbra {
namespace {

// One wait for the device: short, so that a stop signal is seen at once.
constexpr std::chrono::milliseconds kWaitStep{200};
// One look at the driver's output queue while it drains.
constexpr DWORD kDrainStep = 1;
constexpr DWORD kReadChunk = 512;

// The name CreateFileW takes: a port named plainly ("COM12") in the device space ("\\.\COM12"),
// where every port number works; a name already there as it is.
std::string DeviceSpaceName(std::string path) {
    std::replace(path.begin(), path.end(), '/', '\\');
    if (path.rfind("\\\\", 0) == 0) return path;
    return "\\\\.\\" + path;
}

std::string Describe(DWORD error, const std::string& deviceName) {
    return platform::ErrDescription(platform::FileErrorFromWin32(error, deviceName));
}

// Errors with which a transfer on a port that was open and working ends when its device has gone
// away under it (a USB adapter pulled out, the far end of a mapped terminal closed).
bool DeviceGone(DWORD error) {
    return error == ERROR_DEVICE_REMOVED || error == ERROR_BAD_COMMAND ||
           error == ERROR_DEVICE_NOT_CONNECTED || error == ERROR_GEN_FAILURE ||
           error == ERROR_NOT_READY;
}

std::wstring Parity(SerialParity parity) {
    switch (parity) {
        case SerialParity::Even:
            return L"e";
        case SerialParity::Odd:
            return L"o";
        case SerialParity::Mark:
            return L"m";
        case SerialParity::Space:
            return L"s";
        case SerialParity::None:
            break;
    }
    return L"n";
}

std::wstring StopBits(SerialStopBits stop) {
    switch (stop) {
        case SerialStopBits::OneAndHalf:
            return L"1.5";
        case SerialStopBits::Two:
            return L"2";
        case SerialStopBits::One:
            break;
    }
    return L"1";
}

// The line as the device-control block's own text gives it: the settings, and nothing that could
// hold the line back (no flow control of either kind, no waiting for DSR), DTR and RTS raised.
std::wstring ControlText(const SerialSettings& s) {
    return L"baud=" + std::to_wstring(s.baud) + L" parity=" + Parity(s.parity) + L" data=" +
           std::to_wstring(s.dataBits) + L" stop=" + StopBits(s.stopBits) +
           L" to=off xon=off odsr=off octs=off dtr=on rts=on idsr=off";
}

// Milliseconds one character takes on the line, rounded up: start bit, data, parity, stop bits.
DWORD CharacterTime(const SerialSettings& s) {
    const int bits = 1 + s.dataBits + (s.parity == SerialParity::None ? 0 : 1) + 2;
    return static_cast<DWORD>((bits * 1000 + s.baud - 1) / s.baud);
}

// Bytes handed to the device at a time: about half a second of the line, so that the stall clock
// sees progress often at every speed.
DWORD WriteChunk(const SerialSettings& s) {
    return static_cast<DWORD>(std::max(1, s.baud / 20));
}

}  // namespace

// The port's handle while it is open, and the event its transfers signal.
struct SerialPortControl::Line {
    Line() = default;
    ~Line() {
        if (handle != INVALID_HANDLE_VALUE) ::CloseHandle(handle);
        if (done != nullptr) ::CloseHandle(done);
    }
    Line(const Line&) = delete;
    Line& operator=(const Line&) = delete;

    HANDLE handle = INVALID_HANDLE_VALUE;
    HANDLE done = nullptr;
    std::string deviceName;  // as CreateFileW got it
    // The line as the port found it, and whether the port's own settings took.
    DCB found{};
    bool set = false;
};

namespace {

// How one overlapped transfer ended.
struct Transfer {
    DWORD moved = 0;
    DWORD error = 0;       // 0 when it ended well
    bool givenUp = false;  // ended by the caller's judge, then cancelled
};

// Starts a transfer (start issues it with the OVERLAPPED it is given) and waits for it in steps,
// asking judge before each step how long the next may last (0: give up). A transfer given up is
// cancelled and waited for, as it must be before its buffer goes; what it moved before the cancel
// stands.
template <typename Start, typename Judge>
Transfer Run(HANDLE handle, HANDLE done, Start start, Judge judge) {
    OVERLAPPED ov{};
    ov.hEvent = done;
    const BOOL started = start(&ov);
    Transfer out;
    if (started == 0 && ::GetLastError() != ERROR_IO_PENDING) {
        out.error = ::GetLastError();
        return out;
    }
    for (;;) {
        if (::GetOverlappedResult(handle, &ov, &out.moved, FALSE) != 0) {
            out.error = 0;
            return out;
        }
        out.error = ::GetLastError();
        if (out.error != ERROR_IO_INCOMPLETE) return out;
        const DWORD step = judge();
        if (step == 0) {
            if (::CancelIoEx(handle, &ov) == 0) ::CancelIo(handle);
            out.error =
                ::GetOverlappedResult(handle, &ov, &out.moved, TRUE) != 0 ? 0 : ::GetLastError();
            out.givenUp = true;
            return out;
        }
        ::WaitForSingleObject(done, step);
    }
}

}  // namespace

SerialPortControl::SerialPortControl() = default;

SerialPortControl::~SerialPortControl() {
    if (portOpen()) closeLine();
}

std::intptr_t SerialPortControl::nativeHandle() const {
    return line_ ? reinterpret_cast<std::intptr_t>(line_->handle) : -1;
}

bool SerialPortControl::openLine(const std::string& path) {
    const std::string label = PortLabel(commPort_, path) + " ";
    auto line = std::make_unique<Line>();
    line->deviceName = DeviceSpaceName(path);
    // Read access too: without it the line cannot be set. No sharing: a port serves one program.
    line->handle =
        ::CreateFileW(platform::ToWide(line->deviceName).c_str(), GENERIC_READ | GENERIC_WRITE, 0,
                      nullptr, OPEN_EXISTING, FILE_FLAG_OVERLAPPED, nullptr);
    if (line->handle == INVALID_HANDLE_VALUE) {
        const DWORD err = ::GetLastError();
        if (err == ERROR_ACCESS_DENIED || err == ERROR_SHARING_VIOLATION)
            return fail(label + "em uso por outro programa");
        if (err == ERROR_FILE_NOT_FOUND || err == ERROR_PATH_NOT_FOUND)
            return fail(label + "n\xE3o existe");
        return fail(label + "n\xE3o pode ser aberta: " + Describe(err, line->deviceName));
    }
    // A port whose device is missing can still be opened, but cannot give its line settings.
    line->found.DCBlength = sizeof line->found;
    if (::GetCommState(line->handle, &line->found) == 0) {
        return fail(label + "n\xE3o pode ser aberta: " +
                    platform::ErrDescription(platform::kErrDeviceUnavailable));
    }
    line->done = ::CreateEventW(nullptr, TRUE, FALSE, nullptr);
    if (line->done == nullptr)
        return fail(label + "n\xE3o pode ser aberta: " + Describe(::GetLastError(), {}));
    line_ = std::move(line);
    openPath_ = path;
    return true;
}

void SerialPortControl::closeLine() {
    // Settings that were refused leave the line as it was found; settings that took stay for the
    // next program, as it reads them.
    if (!line_->set) ::SetCommState(line_->handle, &line_->found);
    line_.reset();
    openPath_.clear();
}

bool SerialPortControl::applySettings() {
    const std::string refused = PortLabel(commPort_, openPath_) +
                                " recusou a configura\xE7\xE3o \"" + settingsText_ + "\": ";
    std::string why;
    if (!SettingsDeviceCanUse(settings_, why)) return fail(refused + why);

    const HANDLE handle = line_->handle;
    const auto failed = [&] { return fail(refused + Describe(::GetLastError(), {})); };
    DCB dcb{};
    dcb.DCBlength = sizeof dcb;
    if (::GetCommState(handle, &dcb) == 0) return failed();
    if (::BuildCommDCBW(ControlText(settings_).c_str(), &dcb) == 0) return failed();
    // Bytes pass unchanged, and an error on the line does not stop the transfers after it; a byte
    // received with a parity error reads as "?".
    dcb.fBinary = TRUE;
    dcb.fAbortOnError = FALSE;
    dcb.fNull = FALSE;
    dcb.fDsrSensitivity = FALSE;
    dcb.ErrorChar = '?';
    dcb.fErrorChar = settings_.parity == SerialParity::None ? FALSE : TRUE;
    if (::SetCommState(handle, &dcb) == 0) return failed();

    // A driver may take a rate it cannot make without complaint: believe only what it runs at.
    DCB taken{};
    taken.DCBlength = sizeof taken;
    if (::GetCommState(handle, &taken) == 0) return failed();
    if (taken.BaudRate != static_cast<DWORD>(settings_.baud)) {
        return fail(refused + "funciona a " + std::to_string(taken.BaudRate) + " baud em vez de " +
                    std::to_string(settings_.baud));
    }

    // A read returns at once with what has arrived. A write that the device stops taking ends once
    // it has taken nothing for the stall limit beyond the time its bytes need on the line: the
    // port's own bound, behind the program's waits (writeAll).
    COMMTIMEOUTS timeouts{};
    timeouts.ReadIntervalTimeout = MAXDWORD;
    timeouts.WriteTotalTimeoutMultiplier = CharacterTime(settings_);
    timeouts.WriteTotalTimeoutConstant = static_cast<DWORD>(platform::WriteStallLimit().count());
    if (::SetCommTimeouts(handle, &timeouts) == 0) return failed();
    line_->set = true;
    return true;
}

bool SerialPortControl::writeAll(const std::string& bytes) {
    const std::string label = PortLabel(commPort_, openPath_);
    const HANDLE handle = line_->handle;
    platform::WriteWatch watch(bytes.size());
    bool stopped = false;
    // How long the next wait may last; 0 when the write is given up.
    const auto judge = [&]() -> DWORD {
        stopped = watch.stopped();
        if (stopped || watch.stalled()) return 0;
        return static_cast<DWORD>(std::max<std::int64_t>(1, watch.nextWait(kWaitStep).count()));
    };
    // What the device did not take must not leave later, behind the user's back.
    const auto giveUp = [&](std::string why) {
        ::PurgeComm(handle, PURGE_TXABORT | PURGE_TXCLEAR);
        return fail(label + why);
    };
    const auto givenUpText = [&] {
        return stopped ? ": " + platform::ErrDescription(platform::kErrUserInterrupt)
                       : ": " + watch.stallText();
    };

    // Taken means handed to the driver and out of its queue as well: the line's own progress.
    std::size_t done = 0;
    DWORD queued = 0;
    const auto look = [&] {
        DWORD errors = 0;
        COMSTAT status{};
        if (::ClearCommError(handle, &errors, &status) == 0) return false;
        queued = status.cbOutQue;
        watch.taken(done - std::min<std::size_t>(queued, done));
        return true;
    };
    const auto lookFailed = [&] {
        return giveUp(": " + Describe(::GetLastError(), line_->deviceName));
    };

    const DWORD chunk = WriteChunk(settings_);
    while (done < bytes.size()) {
        const DWORD len = static_cast<DWORD>(std::min<std::size_t>(bytes.size() - done, chunk));
        const char* from = bytes.data() + done;
        const Transfer t = Run(
            handle, line_->done,
            [&](OVERLAPPED* ov) { return ::WriteFile(handle, from, len, nullptr, ov); }, judge);
        // What a cancelled write had moved was taken before the wait that gave it up, not now.
        if (t.givenUp) return giveUp(givenUpText());
        done += t.moved;
        // The port's own time-out ends a write early without an error, or with this one.
        if (t.error != 0 && t.error != ERROR_SEM_TIMEOUT && t.error != ERROR_TIMEOUT) {
            if (DeviceGone(t.error)) return giveUp(" foi desligada durante a escrita");
            return giveUp(": " + Describe(t.error, line_->deviceName));
        }
        if (!look()) return lookFailed();
        // A device that ends a write without taking anything is waited for as one that keeps it
        // pending.
        if (t.moved == 0) {
            const DWORD step = judge();
            if (step == 0) return giveUp(givenUpText());
            ::Sleep(step);
        }
    }

    // Every byte is with the driver: wait for its queue to empty.
    while (queued > 0) {
        if (judge() == 0) return giveUp(givenUpText());
        ::Sleep(kDrainStep);
        if (!look()) return lookFailed();
    }
    // The queue is empty, so this returns as soon as the last bytes have left the port.
    if (::FlushFileBuffers(handle) == 0)
        return giveUp(": " + Describe(::GetLastError(), line_->deviceName));
    return true;
}

void SerialPortControl::receivePending() {
    std::string got;
    char chunk[kReadChunk];
    // The port's read time-outs make a read return at once; a driver that keeps one waiting
    // anyway is given one step.
    for (;;) {
        int steps = 0;
        const Transfer t = Run(
            line_->handle, line_->done,
            [&](OVERLAPPED* ov) {
                return ::ReadFile(line_->handle, chunk, kReadChunk, nullptr, ov);
            },
            [&steps]() -> DWORD { return steps++ == 0 ? 200 : 0; });
        got.append(chunk, t.moved);
        if (t.error != 0 || t.givenUp || t.moved < kReadChunk) break;
    }
    // Last: an OnComm handler may close the port.
    arrived(got);
}

}  // namespace lumbra
