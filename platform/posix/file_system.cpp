#include "platform/file_system.h"

#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

#include "platform/file_handles.h"
#include "platform/host_text.h"
#include "platform/posix/file_errors.h"

namespace lumbra::platform {

std::int16_t FileDelete(const std::string& path) {
    if (path.empty()) return kErrBadFileNameOrNumber;
    const std::string host = HostPath(path);
    struct stat st {};
    if (::lstat(host.c_str(), &st) != 0) return FileErrorFromErrno(errno, host);
    if (!S_ISREG(st.st_mode) && !S_ISLNK(st.st_mode)) return kErrPathFileAccess;
    if (S_ISREG(st.st_mode) && FileHeldOpen(path)) return kErrPathFileAccess;
    if (::unlink(host.c_str()) != 0) return FileErrorFromErrno(errno, host);
    return 0;
}

std::int16_t DirCreate(const std::string& path) {
    if (path.empty()) return kErrBadFileNameOrNumber;
    const std::string host = HostPath(path);
    // The device folder belongs to the system: a folder made there would pass for a device.
    if (LiesUnderDev(host)) return kErrPathFileAccess;
    if (::mkdir(host.c_str(), 0777) == 0) return 0;
    switch (errno) {
        case EEXIST:
            return kErrPathFileAccess;
        case ENOENT:
            return kErrPathNotFound;
        default:
            return FileErrorFromErrno(errno, host);
    }
}

}  // namespace lumbra::platform
