#include "platform/file_handles.h"

#include <windows.h>

#include <algorithm>
#include <chrono>
#include <cstring>
#include <map>
#include <utility>

#include "platform/line_buffer.h"
#include "platform/stop_signals.h"
#include "platform/win32/device_names.h"
#include "platform/win32/win32_errors.h"
#include "platform/win32/win_path.h"
#include "platform/write_stall.h"

namespace lumbra::platform {
namespace {

// The host hands out numbers 1 to 511.
constexpr std::int16_t kLastFileNumber = 511;
constexpr DWORD kReadChunk = 64 * 1024;
// Bytes handed to a device at a time: the end of each is the progress the stall clock sees. At
// 1200 baud one of them takes about two seconds, well inside the stall limit.
constexpr DWORD kDeviceChunk = 256;
constexpr DWORD kDiskChunk = 1u << 30;
// One wait for a transfer; short, so that a stop signal is seen at once.
constexpr std::chrono::milliseconds kWaitStep{200};

// How the last write that timed out went, for FileErrText.
std::string& LastStall() {
    static std::string text;
    return text;
}

// What names a file whatever name it was reached by: its volume and its index there.
struct Identity {
    DWORD volume = 0;
    DWORD indexHigh = 0;
    DWORD indexLow = 0;
    bool known = false;
    bool operator==(const Identity&) const = default;
};

Identity IdentityOf(HANDLE handle) {
    BY_HANDLE_FILE_INFORMATION info{};
    if (::GetFileInformationByHandle(handle, &info) == 0) return {};
    return {info.dwVolumeSerialNumber, info.nFileIndexHigh, info.nFileIndexLow, true};
}

// Every file is opened for overlapped transfers, so that a wait for a device can be given up.
struct OpenFile {
    HANDLE handle = INVALID_HANDLE_VALUE;
    HANDLE done = nullptr;  // signalled when a transfer ends
    FileMode mode = FileMode::Input;
    DWORD type = FILE_TYPE_UNKNOWN;  // disk, character device or pipe
    Identity identity;               // disk files only
    // Disk files: where the next transfer starts (an overlapped transfer names its place).
    std::uint64_t position = 0;
    // Input only: what was read ahead of the caller.
    LineBuffer in;

    bool disk() const { return type == FILE_TYPE_DISK; }
};

// The program runs its files from the one window thread, so the table needs no lock.
std::map<std::int16_t, OpenFile>& Table() {
    static std::map<std::int16_t, OpenFile> table;
    return table;
}

OpenFile* Find(std::int16_t num) {
    auto it = Table().find(num);
    return it == Table().end() ? nullptr : &it->second;
}

bool HeldOpen(const Identity& identity) {
    if (!identity.known) return false;
    for (const auto& [num, file] : Table()) {
        if (file.identity == identity) return true;
    }
    return false;
}

bool IsPipeName(std::string_view path) {
    if (path.size() < 9) return false;
    std::string head(path.substr(0, 9));
    std::replace(head.begin(), head.end(), '/', '\\');
    std::transform(head.begin(), head.end(), head.begin(),
                   [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c; });
    return head == "\\\\.\\pipe\\";
}

std::int16_t IoError(DWORD why) {
    return FileErrorFromWin32(why, {});
}

// Whether a transfer under way goes on, or why it is given up.
enum class Verdict { Wait, Stopped, Stalled };

struct Outcome {
    DWORD error = 0;  // the Windows error that ended the transfer, 0 when it went well
    DWORD moved = 0;
    Verdict verdict = Verdict::Wait;
};

// Runs one transfer of len bytes at the file's place and waits for it in steps, asking judge at
// every step whether to go on; a transfer given up is cancelled and waited for, as it must be
// before its buffer goes.
template <typename Judge>
Outcome Transfer(OpenFile& file, bool write, char* data, DWORD len, Judge judge) {
    OVERLAPPED ov{};
    if (file.disk()) {
        ov.Offset = static_cast<DWORD>(file.position);
        ov.OffsetHigh = static_cast<DWORD>(file.position >> 32);
    }
    ov.hEvent = file.done;
    const BOOL started = write ? ::WriteFile(file.handle, data, len, nullptr, &ov)
                               : ::ReadFile(file.handle, data, len, nullptr, &ov);
    Outcome out;
    if (started == 0 && ::GetLastError() != ERROR_IO_PENDING) {
        out.error = ::GetLastError();
        return out;
    }
    for (;;) {
        if (::GetOverlappedResult(file.handle, &ov, &out.moved, FALSE) != 0) {
            out.error = 0;
            return out;
        }
        out.error = ::GetLastError();
        if (out.error != ERROR_IO_INCOMPLETE) return out;
        const auto [verdict, step] = judge();
        if (verdict != Verdict::Wait) {
            if (::CancelIoEx(file.handle, &ov) == 0 && ::GetLastError() != ERROR_NOT_FOUND)
                ::CancelIo(file.handle);
            // A transfer that ended before the cancel reached it stands.
            if (::GetOverlappedResult(file.handle, &ov, &out.moved, TRUE) != 0) {
                out.error = 0;
                return out;
            }
            out.error = ::GetLastError();
            out.verdict = verdict;
            return out;
        }
        ::WaitForSingleObject(file.done, static_cast<DWORD>(step.count()));
    }
}

// Gives a write up: what a port still holds would otherwise leave later, behind the user's back.
std::int16_t Abandon(const OpenFile& file, std::int16_t err) {
    if (file.type == FILE_TYPE_CHAR) ::PurgeComm(file.handle, PURGE_TXABORT | PURGE_TXCLEAR);
    return err;
}

// The error number of a write given up, with what the stall was for FileErrText.
std::int16_t GivenUp(const OpenFile& file, Verdict verdict, const WriteWatch& watch) {
    if (verdict == Verdict::Stopped) return Abandon(file, kErrUserInterrupt);
    LastStall() = watch.stallText();
    return Abandon(file, kErrDeviceTimeout);
}

// Reads the next chunk; 0 at the end of the file, -1 after setting err.
long Refill(OpenFile& file, std::int16_t& err) {
    file.in.buffer.resize(kReadChunk);
    file.in.pos = 0;
    // A stop signal ends a read that waits for a pipe.
    const Outcome out = Transfer(file, false, file.in.buffer.data(), kReadChunk, [] {
        return std::pair(StopRequested() ? Verdict::Stopped : Verdict::Wait, kWaitStep);
    });
    file.in.buffer.resize(out.moved);
    file.position += out.moved;
    if (out.verdict == Verdict::Stopped) {
        err = kErrUserInterrupt;
        return -1;
    }
    // A pipe whose writer has gone has ended, as a file does.
    if (out.error == ERROR_HANDLE_EOF || out.error == ERROR_BROKEN_PIPE) return 0;
    if (out.error != 0) {
        err = IoError(out.error);
        file.in.buffer.clear();
        return -1;
    }
    return static_cast<long>(out.moved);
}

DWORD AccessFor(FileMode mode) {
    switch (mode) {
        case FileMode::Input:
            return GENERIC_READ;
        case FileMode::Binary:
            return GENERIC_READ | GENERIC_WRITE;
        case FileMode::Output:
        case FileMode::Append:
            return GENERIC_WRITE;
    }
    return GENERIC_READ;
}

// Sets up a freshly opened handle as file: 0, or the error number after which handle is closed.
std::int16_t Prepare(OpenFile& file) {
    ::SetLastError(NO_ERROR);
    file.type = ::GetFileType(file.handle);
    // A port whose hardware is gone can still be opened, but cannot even tell what it is.
    if (file.type == FILE_TYPE_UNKNOWN && ::GetLastError() != NO_ERROR)
        return kErrDeviceUnavailable;
    // A device is no text file: its reads may never end, or wait for someone to type.
    if (file.mode == FileMode::Input && file.type == FILE_TYPE_CHAR) return kErrPathFileAccess;
    if (file.disk()) {
        file.identity = IdentityOf(file.handle);
        // Checked before anything is emptied: the file is only opened so far.
        if ((file.mode == FileMode::Output || file.mode == FileMode::Append) &&
            HeldOpen(file.identity))
            return kErrFileAlreadyOpen;
        // Emptied here rather than by the open, which would also drop the file's attributes.
        if (file.mode == FileMode::Output && ::SetEndOfFile(file.handle) == 0)
            return IoError(::GetLastError());
        LARGE_INTEGER size{};
        if (file.mode == FileMode::Append && ::GetFileSizeEx(file.handle, &size) != 0)
            file.position = static_cast<std::uint64_t>(size.QuadPart);
    }
    file.done = ::CreateEventW(nullptr, TRUE, FALSE, nullptr);
    return file.done == nullptr ? IoError(::GetLastError()) : std::int16_t{0};
}

}  // namespace

std::int16_t FreeFile() {
    for (std::int16_t num = 1; num <= kLastFileNumber; ++num) {
        if (!FileIsOpen(num)) return num;
    }
    return 0;
}

std::int16_t FileOpen(std::int16_t num, const std::string& path, FileMode mode) {
    if (num < 1 || num > kLastFileNumber) return kErrBadFileNameOrNumber;
    if (FileIsOpen(num)) return kErrFileAlreadyOpen;
    if (path.empty()) return kErrBadFileNameOrNumber;
    const bool device = NamesDevice(path);
    // Not even opened: opening a port already takes it from everyone else.
    if (mode == FileMode::Input && device && !IsPipeName(path)) return kErrPathFileAccess;
    const std::wstring name = WinPath(path);
    if (!device) {
        const DWORD attributes = ::GetFileAttributesW(name.c_str());
        if (attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0)
            return kErrPathFileAccess;
    }
    // A device is opened as it is and never created; so is a file to be read.
    const DWORD disposition = device || mode == FileMode::Input ? OPEN_EXISTING : OPEN_ALWAYS;
    OpenFile file;
    file.mode = mode;
    file.handle =
        ::CreateFileW(name.c_str(), AccessFor(mode), FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                      disposition, FILE_ATTRIBUTE_NORMAL | FILE_FLAG_OVERLAPPED, nullptr);
    if (file.handle == INVALID_HANDLE_VALUE) return FileErrorFromWin32(::GetLastError(), path);
    if (const std::int16_t err = Prepare(file); err != 0) {
        ::CloseHandle(file.handle);
        if (file.done != nullptr) ::CloseHandle(file.done);
        return err;
    }
    Table().emplace(num, std::move(file));
    return 0;
}

bool FileIsOpen(std::int16_t num) {
    return Find(num) != nullptr;
}

std::int16_t FileReadLine(std::int16_t num, std::string& line) {
    OpenFile* file = Find(num);
    if (file == nullptr || file->mode != FileMode::Input) return kErrBadFileNameOrNumber;
    return ReadBufferedLine(file->in, line,
                            [file](std::int16_t& err) { return Refill(*file, err); });
}

std::int16_t FileWrite(std::int16_t num, std::string_view text, bool newline) {
    OpenFile* file = Find(num);
    if (file == nullptr || file->mode == FileMode::Input) return kErrBadFileNameOrNumber;
    std::string bytes(text);
    if (newline) bytes += "\r\n";
    WriteWatch watch(bytes.size());
    const auto judge = [&watch] {
        if (watch.stopped()) return std::pair(Verdict::Stopped, kWaitStep);
        if (watch.stalled()) return std::pair(Verdict::Stalled, kWaitStep);
        return std::pair(Verdict::Wait, watch.nextWait(kWaitStep));
    };
    std::size_t done = 0;
    while (done < bytes.size()) {
        const DWORD len = static_cast<DWORD>(
            std::min<std::size_t>(bytes.size() - done, file->disk() ? kDiskChunk : kDeviceChunk));
        const Outcome out = Transfer(*file, true, bytes.data() + done, len, judge);
        if (out.verdict != Verdict::Wait) return GivenUp(*file, out.verdict, watch);
        done += out.moved;
        file->position += out.moved;
        watch.taken(done);
        if (out.error != 0) return Abandon(*file, IoError(out.error));
        if (out.moved > 0) continue;
        if (file->disk()) return kErrDiskFull;
        // A device that ends a transfer without taking anything is waited for as one that keeps
        // it pending.
        const auto [verdict, step] = judge();
        if (verdict != Verdict::Wait) return GivenUp(*file, verdict, watch);
        ::Sleep(static_cast<DWORD>(step.count()));
    }
    return 0;
}

std::string FileErrText(std::int16_t err) {
    if (err == kErrDeviceTimeout && !LastStall().empty())
        return ErrDescription(err) + ": " + LastStall();
    return ErrDescription(err);
}

std::int16_t FileClose(std::int16_t num) {
    auto it = Table().find(num);
    if (it == Table().end()) return 0;
    OpenFile file = std::move(it->second);
    Table().erase(it);
    std::int16_t err = 0;
    // What the system still holds of a written file reaches the disk now, so that a failure is
    // reported here and not lost. Only for disks: a pipe's or a port's flush waits for the far
    // side, which may never come.
    if (file.disk() && file.mode != FileMode::Input && ::FlushFileBuffers(file.handle) == 0)
        err = IoError(::GetLastError());
    if (::CloseHandle(file.handle) == 0 && err == 0) err = IoError(::GetLastError());
    ::CloseHandle(file.done);
    return err;
}

void FileCloseAll() {
    while (!Table().empty())
        FileClose(Table().begin()->first);
}

bool FileHeldOpen(const std::string& path) {
    // Looking at a device would open it.
    if (path.empty() || NamesDevice(path)) return false;
    // Asking for no access at all meets no other opener's sharing rules.
    const HANDLE handle = ::CreateFileW(
        WinPath(path).c_str(), 0, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
        OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr);
    if (handle == INVALID_HANDLE_VALUE) return false;
    const Identity identity =
        ::GetFileType(handle) == FILE_TYPE_DISK ? IdentityOf(handle) : Identity{};
    ::CloseHandle(handle);
    return HeldOpen(identity);
}

}  // namespace lumbra::platform
