#include "channels/posix/serial_lock.h"

#include <fcntl.h>
#include <signal.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <sys/sysmacros.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <climits>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <optional>
#include <sstream>
#include <thread>
#include <vector>

namespace lumbra {
namespace {

// Where the system's serial programs look for their lock folder, in their order.
constexpr std::array<const char*, 8> kLockFolders = {
    "/var/lock", "/etc/locks", "/var/spool/locks",  "/var/spool/uucp",
    "/tmp",      "/var/tmp",   "/var/lock/lockdev", "/run/lock"};

// Times the lock file is tried for when another program keeps taking or leaving it in between.
constexpr int kTakeTries = 5;

const std::string kOtherProgram = "em uso por outro programa";

std::string LockName(const std::string& hostPath) {
    std::string name = hostPath.rfind("/dev/", 0) == 0 ? hostPath.substr(5) : hostPath;
    std::replace(name.begin(), name.end(), '/', '_');
    return "LCK.." + name;
}

// The device's own path, links followed: /dev/serial/by-id/... is locked as the ttyUSB0 it
// stands for, as programs given that name lock it.
std::string DevicePath(const std::string& hostPath) {
    char* real = ::realpath(hostPath.c_str(), nullptr);
    if (real == nullptr) return hostPath;
    std::string path = real;
    std::free(real);
    return path;
}

// The lock names a program may have used for the device: its own, and the one of the name it was
// given when that is another.
std::vector<std::string> LockNames(const std::string& hostPath) {
    std::vector<std::string> names = {LockName(DevicePath(hostPath))};
    if (LockName(hostPath) != names.front()) names.push_back(LockName(hostPath));
    return names;
}

std::optional<std::string> ReadAll(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    if (!in) return std::nullopt;
    std::ostringstream all;
    all << in.rdbuf();
    return all.str();
}

// The process number a lock names, in any of the formats programs write ("      1234\n",
// "1234 minicom user", "1234\napp\nhost"); 0 when it names none.
long LockOwner(const std::string& text) {
    std::istringstream in(text);
    long pid = 0;
    if (!(in >> pid) || pid <= 0 || pid > INT_MAX) return 0;
    return pid;
}

bool Running(long pid) {
    return ::kill(static_cast<pid_t>(pid), 0) == 0 || errno != ESRCH;
}

std::string ProcessText(long pid) {
    std::string text = "em uso pelo processo " + std::to_string(pid);
    std::ifstream comm("/proc/" + std::to_string(pid) + "/comm");
    std::string name;
    if (std::getline(comm, name) && !name.empty()) text += " (" + name + ")";
    return text;
}

// How long ago the file was last written; a time in the future counts as now.
std::chrono::milliseconds Age(const std::string& path) {
    struct stat st {};
    if (::stat(path.c_str(), &st) != 0) return {};
    const auto modified =
        std::chrono::seconds(st.st_mtim.tv_sec) + std::chrono::nanoseconds(st.st_mtim.tv_nsec);
    const auto now = std::chrono::system_clock::now().time_since_epoch();
    return std::max(std::chrono::duration_cast<std::chrono::milliseconds>(now - modified),
                    std::chrono::milliseconds{0});
}

enum class LockState { Missing, Live, Stale, Young };

struct LockLook {
    LockState state = LockState::Missing;
    long owner = 0;
};

LockLook Look(const std::string& path) {
    const std::optional<std::string> text = ReadAll(path);
    if (!text) return {};
    const long owner = LockOwner(*text);
    if (owner != 0) return {Running(owner) ? LockState::Live : LockState::Stale, owner};
    return {Age(path) >= kEmptyLockAge ? LockState::Stale : LockState::Young, 0};
}

// Judges the lock file at path and removes it when stale. False when a running process holds it,
// with inUse naming that process.
bool Clear(const std::string& path, std::string& inUse) {
    LockLook look = Look(path);
    if (look.state == LockState::Young) {
        std::this_thread::sleep_for(kEmptyLockAge - std::min(Age(path), kEmptyLockAge));
        look = Look(path);
        // Given its time, a lock that still names no process never will.
        if (look.state == LockState::Young) look.state = LockState::Stale;
    }
    if (look.state == LockState::Live) {
        inUse = ProcessText(look.owner);
        return false;
    }
    if (look.state == LockState::Stale) ::unlink(path.c_str());
    return true;
}

enum class Made { Yes, Taken, Failed };

// Writes this process's lock at path. The lock is written whole under a name of its own and then
// linked to its place, which fails when a lock is already there: no other program ever sees it
// half written, and of two programs taking it at once only one succeeds.
Made MakeLock(const std::string& path) {
    const std::string folder = path.substr(0, path.rfind('/'));
    const std::string draft = folder + "/LTMP." + std::to_string(::getpid());
    ::unlink(draft.c_str());
    const int fd = ::open(draft.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0644);
    if (fd < 0) return Made::Failed;
    // The process number as the system's serial programs write it: ten characters and a newline.
    char text[16];
    const int size = std::snprintf(text, sizeof text, "%10d\n", static_cast<int>(::getpid()));
    // Readable by every other program, whatever the umask, or none of them could tell it is live.
    const bool written = size > 0 && ::fchmod(fd, 0644) == 0 &&
                         ::write(fd, text, static_cast<std::size_t>(size)) == size;
    ::close(fd);
    const int linked = written ? ::link(draft.c_str(), path.c_str()) : -1;
    const int why = errno;
    ::unlink(draft.c_str());
    if (linked == 0) return Made::Yes;
    return written && why == EEXIST ? Made::Taken : Made::Failed;
}

}  // namespace

std::string SerialLockPath(const std::string& hostPath) {
    const std::string name = LockName(DevicePath(hostPath));
    for (const char* folder : kLockFolders) {
        const std::string path = std::string(folder) + "/" + name;
        if (::access(folder, R_OK) != 0) continue;
        if (::access(path.c_str(), F_OK) == 0 || ::access(folder, W_OK) == 0) return path;
    }
    return {};
}

bool SerialLock::takeFile(const std::string& hostPath) {
    release();
    inUse_.clear();
    const std::vector<std::string> names = LockNames(hostPath);
    for (int tries = 0; tries < kTakeTries; ++tries) {
        for (const std::string& name : names) {
            for (const char* folder : kLockFolders) {
                if (!Clear(std::string(folder) + "/" + name, inUse_)) return false;
            }
        }
        const std::string path = SerialLockPath(hostPath);
        if (path.empty()) return true;
        const Made made = MakeLock(path);
        if (made == Made::Yes) lockPath_ = path;
        if (made != Made::Taken) return true;
    }
    // A lock that keeps coming back without a running owner, or one this user may not remove:
    // the device goes without a lock file rather than being blocked by it.
    return true;
}

bool SerialLock::takeDevice(int fd, const std::string& hostPath) {
    inUse_.clear();
    while (::flock(fd, LOCK_EX | LOCK_NB) != 0) {
        if (errno == EINTR) continue;
        // A device that knows no flock is held by its lock file alone.
        if (errno != EWOULDBLOCK) return true;
        inUse_ = DeviceLockHolder(hostPath);
        if (inUse_.empty()) inUse_ = kOtherProgram;
        return false;
    }
    return true;
}

void SerialLock::release() {
    if (lockPath_.empty()) return;
    const std::optional<std::string> text = ReadAll(lockPath_);
    if (text && LockOwner(*text) == ::getpid()) ::unlink(lockPath_.c_str());
    lockPath_.clear();
}

std::string DeviceLockHolder(const std::string& hostPath) {
    struct stat device {};
    if (::stat(hostPath.c_str(), &device) != 0) return {};
    // One lock a line: "1: FLOCK  ADVISORY  WRITE 1234 00:1a:3 0 EOF", the file named by the
    // major and minor number (hexadecimal) of its file system and its inode; a process waiting for
    // a lock shows as "1: -> FLOCK ...".
    std::ifstream locks("/proc/locks");
    for (std::string line; std::getline(locks, line);) {
        std::istringstream in(line);
        std::string number, kind, mode, access, file;
        long pid = 0;
        if (!(in >> number >> kind >> mode >> access >> pid >> file) || kind != "FLOCK") continue;
        unsigned int fileMajor = 0, fileMinor = 0;
        unsigned long inode = 0;
        if (std::sscanf(file.c_str(), "%x:%x:%lu", &fileMajor, &fileMinor, &inode) != 3) continue;
        if (fileMajor != ::major(device.st_dev) || fileMinor != ::minor(device.st_dev) ||
            inode != device.st_ino)
            continue;
        if (pid > 0 && Running(pid)) return ProcessText(pid);
    }
    return {};
}

}  // namespace lumbra
