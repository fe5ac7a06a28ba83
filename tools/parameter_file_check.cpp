#include "tools/parameter_file_check.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <vector>

#include "platform/file_handles.h"

namespace lumbra::ctl {
namespace {

// Follows UTF-8 sequences across the chunks of a read: how many continuation bytes are still
// due, whether any multi-byte sequence was complete, and whether any byte broke the rules.
class Utf8Check {
  public:
    void take(unsigned char b) {
        if (due_ > 0) {
            if ((b & 0xC0) != 0x80) broken_ = true;
            if (--due_ == 0) complete_ = true;
            return;
        }
        if (b < 0x80) return;
        if (b >= 0xC2 && b <= 0xDF) {
            due_ = 1;
        } else if (b >= 0xE0 && b <= 0xEF) {
            due_ = 2;
        } else if (b >= 0xF0 && b <= 0xF4) {
            due_ = 3;
        } else {
            broken_ = true;
        }
    }
    bool utf8() const { return complete_ && !broken_ && due_ == 0; }

  private:
    int due_ = 0;
    bool complete_ = false;
    bool broken_ = false;
};

}  // namespace

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

ParameterFileScan ScanParameterFile(const std::string& hostPath) {
    ParameterFileScan scan;
    const int fd = ::open(hostPath.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY);
    if (fd < 0) return scan;
    struct stat st {};
    if (::fstat(fd, &st) != 0 || !S_ISREG(st.st_mode)) {
        ::close(fd);
        return scan;
    }
    Utf8Check utf8;
    std::size_t lineLength = 0;
    std::vector<unsigned char> chunk(64 * 1024);
    for (;;) {
        const ssize_t got = ::read(fd, chunk.data(), chunk.size());
        if (got < 0 && errno == EINTR) continue;
        if (got <= 0) break;
        for (std::size_t i = 0; i < static_cast<std::size_t>(got); ++i) {
            const unsigned char b = chunk[i];
            if (b == '\r' || b == '\n') {
                lineLength = 0;
                continue;
            }
            if (++lineLength == platform::kMaxLineLength + 1) ++scan.longLines;
            utf8.take(b);
        }
    }
    ::close(fd);
    scan.utf8 = utf8.utf8();
    return scan;
}

}  // namespace lumbra::ctl
