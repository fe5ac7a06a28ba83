#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <vector>

#include "tools/parameter_file_check.h"
#include "tools/regular_file.h"

namespace lumbra::ctl {

std::string UnreadableReason(const std::string& hostPath) {
    const int fd = ::open(hostPath.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY);
    if (fd < 0) {
        switch (errno) {
            case ENOENT:
            case ENOTDIR:
                return "n\xE3o existe";
            case EACCES:
            case EPERM:
                return "sem permiss\xE3o de leitura";
            case ELOOP:
                return "as liga\xE7\xF5"
                       "es simb\xF3licas do caminho formam um ciclo";
            case EISDIR:
                return "\xE9 uma pasta";
            default:
                return {};
        }
    }
    struct stat st {};
    const bool known = ::fstat(fd, &st) == 0;
    ::close(fd);
    if (known && S_ISDIR(st.st_mode)) return "\xE9 uma pasta";
    if (known && S_ISCHR(st.st_mode)) return "\xE9 um dispositivo, n\xE3o um ficheiro";
    return {};
}

bool ReadRegularFile(const std::string& hostPath,
                     const std::function<void(std::string_view chunk)>& take) {
    const int fd = ::open(hostPath.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY);
    if (fd < 0) return false;
    struct stat st {};
    if (::fstat(fd, &st) != 0 || !S_ISREG(st.st_mode)) {
        ::close(fd);
        return false;
    }
    std::vector<char> chunk(64 * 1024);
    for (;;) {
        const ssize_t got = ::read(fd, chunk.data(), chunk.size());
        if (got < 0 && errno == EINTR) continue;
        if (got <= 0) break;
        take(std::string_view(chunk.data(), static_cast<std::size_t>(got)));
    }
    ::close(fd);
    return true;
}

}  // namespace lumbra::ctl
