#include "platform/file_handles.h"

#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <sys/types.h>
#include <termios.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstddef>
#include <cstring>
#include <ctime>
#include <map>
#include <memory>
#include <optional>
#include <thread>

#include "platform/host_text.h"
#include "platform/line_buffer.h"
#include "platform/posix/file_errors.h"
#include "platform/stop_signals.h"
#include "platform/write_stall.h"

namespace lumbra::platform {
namespace {

// The host hands out numbers 1 to 511.
constexpr std::int16_t kLastFileNumber = 511;
constexpr std::size_t kReadChunk = 64 * 1024;
// One wait for a device to take more bytes; short, so that a stop signal is seen at once.
constexpr std::chrono::milliseconds kWriteStep{200};
constexpr std::chrono::milliseconds kDrainStep{1};

// How the last write that timed out went, for FileErrText.
std::string& LastStall() {
    static std::string text;
    return text;
}

struct OpenFile {
    int fd = -1;
    FileMode mode = FileMode::Input;
    // A plain file never makes a write wait nor raises SIGPIPE: its writes skip the guards.
    bool regular = true;
    dev_t device = 0;
    ino_t inode = 0;
    // Input only: what was read ahead of the caller.
    LineBuffer in;
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

bool HeldOpen(const struct stat& st) {
    for (const auto& [num, file] : Table()) {
        if (file.device == st.st_dev && file.inode == st.st_ino) return true;
    }
    return false;
}

// O_NONBLOCK keeps the open itself from waiting for a FIFO's reader or a terminal's carrier; the
// writes then wait on their own terms (FileWrite).
int OpenFlags(FileMode mode, bool device) {
    const int create = device ? 0 : O_CREAT;
    switch (mode) {
        case FileMode::Output:
            return O_WRONLY | create | O_TRUNC | O_NONBLOCK;
        case FileMode::Append:
            return O_WRONLY | create | O_APPEND | O_NONBLOCK;
        case FileMode::Binary:
            return O_RDWR | create | O_NONBLOCK;
        case FileMode::Input:
            return O_RDONLY | O_NONBLOCK;
    }
    return O_RDONLY | O_NONBLOCK;
}

std::int16_t IoErrorFromErrno(int errnum) {
    switch (errnum) {
        case ENOSPC:
        case EDQUOT:
        case EFBIG:
            return kErrDiskFull;
        case EBADF:
            return kErrBadFileNameOrNumber;
        case EIO:
        case EPIPE:
        case ENXIO:
            return kErrDeviceIo;
        default:
            return kErrPathFileAccess;
    }
}

// A write to a FIFO whose reader has gone raises SIGPIPE, which would end the program: it is held
// back around the write, and the write's EPIPE reports the failure instead.
class SigpipeHeld {
  public:
    SigpipeHeld() {
        sigset_t pipe;
        sigemptyset(&pipe);
        sigaddset(&pipe, SIGPIPE);
        sigset_t pending;
        sigpending(&pending);
        wasPending_ = sigismember(&pending, SIGPIPE) == 1;
        pthread_sigmask(SIG_BLOCK, &pipe, &previous_);
    }
    ~SigpipeHeld() {
        sigset_t pipe;
        sigemptyset(&pipe);
        sigaddset(&pipe, SIGPIPE);
        sigset_t pending;
        sigpending(&pending);
        if (!wasPending_ && sigismember(&pending, SIGPIPE) == 1) {
            const timespec none{0, 0};
            sigtimedwait(&pipe, nullptr, &none);
        }
        pthread_sigmask(SIG_SETMASK, &previous_, nullptr);
    }
    SigpipeHeld(const SigpipeHeld&) = delete;
    SigpipeHeld& operator=(const SigpipeHeld&) = delete;

  private:
    sigset_t previous_{};
    bool wasPending_ = false;
};

// Gives a write up: what a terminal still queues would otherwise leave later, behind the user's
// back, and would make the close wait for it.
std::int16_t Abandon(int fd, std::int16_t err) {
    if (::isatty(fd) == 1) ::tcflush(fd, TCOFLUSH);
    return err;
}

// Reads the next chunk; 0 at the end of the file, -1 after setting err.
ssize_t Refill(OpenFile& file, std::int16_t& err) {
    file.in.buffer.resize(kReadChunk);
    file.in.pos = 0;
    for (;;) {
        const ssize_t got = ::read(file.fd, file.in.buffer.data(), kReadChunk);
        if (got >= 0) {
            file.in.buffer.resize(static_cast<std::size_t>(got));
            return got;
        }
        // A stop signal ends a read that waits for a device or a pipe.
        if (errno == EINTR && !StopRequested()) continue;
        err = errno == EINTR ? kErrUserInterrupt : IoErrorFromErrno(errno);
        file.in.buffer.clear();
        return -1;
    }
}

// A terminal (a serial line used as a file port) holds what it was given in its driver's queue:
// the write is done when the queue is empty, under the same stall rule, and nothing is left for
// the close to wait on for the driver's own half minute.
std::int16_t DrainTerminal(int fd, std::size_t total, WriteWatch& watch) {
    if (::isatty(fd) != 1) return 0;
    for (;;) {
        int queued = 0;
        if (::ioctl(fd, TIOCOUTQ, &queued) != 0 || queued <= 0) return 0;
        watch.taken(total - std::min(static_cast<std::size_t>(queued), total));
        if (watch.stopped()) return Abandon(fd, kErrUserInterrupt);
        if (watch.stalled()) {
            LastStall() = watch.stallText();
            return Abandon(fd, kErrDeviceTimeout);
        }
        std::this_thread::sleep_for(kDrainStep);
    }
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
    const std::string host = HostPath(path);

    // A device is no text file: a character device's reads never end (/dev/zero) or wait for
    // someone to type, and a disk would be read whole as one line. Checked before opening, which
    // may itself wait on such a device.
    if (mode == FileMode::Input) {
        struct stat st {};
        if (::stat(host.c_str(), &st) == 0 && (S_ISCHR(st.st_mode) || S_ISBLK(st.st_mode)))
            return kErrPathFileAccess;
    }
    // Checked before opening: opening for output empties the file at once.
    if (mode == FileMode::Output || mode == FileMode::Append) {
        struct stat st {};
        if (::stat(host.c_str(), &st) == 0 && S_ISREG(st.st_mode) && HeldOpen(st)) {
            return kErrFileAlreadyOpen;
        }
    }

    const bool device = mode != FileMode::Input && LiesUnderDev(host);
    int fd = -1;
    do {
        fd = ::open(host.c_str(), OpenFlags(mode, device) | O_CLOEXEC | O_NOCTTY, 0666);
    } while (fd < 0 && errno == EINTR);
    if (fd < 0) return FileErrorFromErrno(errno, host);
    // Reading waits for its data as it always did; only the open was kept from waiting.
    if (mode == FileMode::Input) ::fcntl(fd, F_SETFL, ::fcntl(fd, F_GETFL) & ~O_NONBLOCK);

    struct stat st {};
    if (::fstat(fd, &st) != 0 || S_ISDIR(st.st_mode)) {
        ::close(fd);
        return kErrPathFileAccess;
    }
    OpenFile file;
    file.fd = fd;
    file.mode = mode;
    file.regular = S_ISREG(st.st_mode);
    file.device = st.st_dev;
    file.inode = st.st_ino;
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
    // One write per call: a full disk is reported by the write that meets it, and nothing is held
    // back when the program ends at once.
    std::string withEnd;
    if (newline) {
        withEnd.reserve(text.size() + 2);
        withEnd.append(text).append("\r\n");
        text = withEnd;
    }
    std::optional<SigpipeHeld> noSigpipe;
    if (!file->regular) noSigpipe.emplace();
    WriteWatch watch(text.size());
    std::size_t done = 0;
    while (done < text.size()) {
        const ssize_t put = ::write(file->fd, text.data() + done, text.size() - done);
        if (put > 0) {
            done += static_cast<std::size_t>(put);
            watch.taken(done);
            continue;
        }
        if (put == 0) return kErrDiskFull;
        const int why = errno;
        if (why != EINTR && why != EAGAIN) return Abandon(file->fd, IoErrorFromErrno(why));
        if (watch.stopped()) return Abandon(file->fd, kErrUserInterrupt);
        if (why == EINTR) continue;
        if (watch.stalled()) {
            LastStall() = watch.stallText();
            return Abandon(file->fd, kErrDeviceTimeout);
        }
        pollfd p{file->fd, POLLOUT, 0};
        ::poll(&p, 1, static_cast<int>(watch.nextWait(kWriteStep).count()));
    }
    return DrainTerminal(file->fd, text.size(), watch);
}

std::string FileErrText(std::int16_t err) {
    if (err == kErrDeviceTimeout && !LastStall().empty())
        return ErrDescription(err) + ": " + LastStall();
    return ErrDescription(err);
}

std::int16_t FileClose(std::int16_t num) {
    auto it = Table().find(num);
    if (it == Table().end()) return 0;
    const int fd = it->second.fd;
    Table().erase(it);
    // Linux releases the descriptor even when close reports EINTR, so it is not retried.
    if (::close(fd) != 0 && errno != EINTR) return IoErrorFromErrno(errno);
    return 0;
}

void FileCloseAll() {
    while (!Table().empty())
        FileClose(Table().begin()->first);
}

bool FileHeldOpen(const std::string& path) {
    struct stat st {};
    return !path.empty() && ::stat(HostPath(path).c_str(), &st) == 0 && HeldOpen(st);
}

}  // namespace lumbra::platform
