#include "platform/file_replace.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <system_error>

#include "platform/host_text.h"
#include "platform/posix/file_errors.h"

namespace lumbra::platform {
namespace {

namespace fs = std::filesystem;

// Flushes what the host holds of a file or folder to the disk.
std::int16_t SyncToDisk(const std::string& host, bool folder) {
    int fd = -1;
    do {
        fd = ::open(host.c_str(), O_RDONLY | O_CLOEXEC | (folder ? O_DIRECTORY : 0));
    } while (fd < 0 && errno == EINTR);
    if (fd < 0) return FileErrorFromErrno(errno, host);
    int rc = 0;
    do {
        rc = ::fsync(fd);
    } while (rc != 0 && errno == EINTR);
    const int syncErr = rc != 0 ? errno : 0;
    ::close(fd);
    return syncErr != 0 ? FileErrorFromErrno(syncErr, host) : std::int16_t{0};
}

std::string FolderOf(const std::string& host) {
    const fs::path parent = fs::path(host).parent_path();
    return parent.empty() ? std::string(".") : parent.string();
}

}  // namespace

bool ReplaceableByRename(const std::string& path) {
    const std::string host = HostPath(path);
    // Nothing under /dev is ever made, not even a file beside a device.
    if (path.empty() || LiesUnderDev(host)) return false;
    std::error_code ec;
    const fs::file_status st = fs::symlink_status(host, ec);
    return st.type() == fs::file_type::not_found || st.type() == fs::file_type::regular ||
           st.type() == fs::file_type::symlink;
}

std::int16_t ReplaceFileWith(const std::string& target, const std::string& replacement) {
    const std::string from = HostPath(replacement);
    const std::string to = HostPath(target);
    if (const std::int16_t err = SyncToDisk(from, false); err != 0) return err;
    if (std::rename(from.c_str(), to.c_str()) != 0) return FileErrorFromErrno(errno, to);
    // A folder that cannot be flushed does not undo a rename that has already happened.
    SyncToDisk(FolderOf(to), true);
    return 0;
}

}  // namespace lumbra::platform
