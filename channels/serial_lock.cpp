#include "channels/serial_lock.h"

#include <signal.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <fstream>
#include <sstream>
#include <thread>

namespace lumbra {
namespace {

// Where the serial-port library looks for its lock folder, in its order.
constexpr std::array<const char*, 8> kLockFolders = {
    "/var/lock", "/etc/locks", "/var/spool/locks",  "/var/spool/uucp",
    "/tmp",      "/var/tmp",   "/var/lock/lockdev", "/run/lock"};

std::string LockName(const std::string& hostPath) {
    std::string name = hostPath.rfind("/dev/", 0) == 0 ? hostPath.substr(5) : hostPath;
    for (char& c : name) {
        if (c == '/') c = '_';
    }
    return "LCK.." + name;
}

struct LockFile {
    std::string path;
    std::string text;
    bool read = false;
};

LockFile ReadLock(const std::string& path) {
    LockFile lock{path, {}, false};
    std::ifstream in(path, std::ios::binary);
    if (!in) return lock;
    std::ostringstream all;
    all << in.rdbuf();
    lock.text = all.str();
    lock.read = true;
    return lock;
}

bool Blank(const std::string& text) {
    return text.find_first_not_of(" \t\r\n") == std::string::npos;
}

// The process number a lock names; 0 when it names none that can be read.
long LockOwner(const std::string& text) {
    std::istringstream in(text);
    long pid = 0;
    if (!(in >> pid) || pid <= 0) return 0;
    return pid;
}

bool Running(long pid) {
    return ::kill(static_cast<pid_t>(pid), 0) == 0 || errno != ESRCH;
}

std::chrono::milliseconds Age(const std::string& path) {
    struct stat st {};
    if (::stat(path.c_str(), &st) != 0) return {};
    const auto modified =
        std::chrono::seconds(st.st_mtim.tv_sec) + std::chrono::nanoseconds(st.st_mtim.tv_nsec);
    const auto now = std::chrono::system_clock::now().time_since_epoch();
    return std::chrono::duration_cast<std::chrono::milliseconds>(now - modified);
}

template <typename Visit>
void EachLock(const std::string& hostPath, Visit visit) {
    const std::string name = LockName(hostPath);
    for (const char* folder : kLockFolders) {
        const LockFile lock = ReadLock(std::string(folder) + "/" + name);
        if (lock.read) visit(lock);
    }
}

}  // namespace

std::string SerialLockPath(const std::string& hostPath) {
    const std::string name = LockName(hostPath);
    for (const char* folder : kLockFolders) {
        const std::string path = std::string(folder) + "/" + name;
        if (::access(folder, R_OK) != 0) continue;
        if (::access(path.c_str(), F_OK) == 0 || ::access(folder, W_OK) == 0) return path;
    }
    return {};
}

void RemoveStaleSerialLocks(const std::string& hostPath) {
    EachLock(hostPath, [](LockFile lock) {
        if (Blank(lock.text)) {
            const auto age = Age(lock.path);
            if (age < kEmptyLockAge) {
                std::this_thread::sleep_for(kEmptyLockAge - age);
                lock = ReadLock(lock.path);
                if (!lock.read || !Blank(lock.text)) return;
            }
            ::unlink(lock.path.c_str());
            return;
        }
        const long owner = LockOwner(lock.text);
        if (owner != 0 && !Running(owner)) ::unlink(lock.path.c_str());
    });
}

std::string SerialLockHolder(const std::string& hostPath) {
    std::string holder;
    EachLock(hostPath, [&holder](const LockFile& lock) {
        const long owner = LockOwner(lock.text);
        if (!holder.empty() || owner == 0 || !Running(owner)) return;
        holder = "process " + std::to_string(owner);
        std::ifstream comm("/proc/" + std::to_string(owner) + "/comm");
        std::string name;
        if (std::getline(comm, name) && !name.empty()) holder += " (" + name + ")";
    });
    return holder;
}

}  // namespace lumbra
