#include "platform/posix/file_errors.h"

#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <string>
#include <vector>

#include "platform/file_handles.h"

namespace lumbra::platform {

bool ParentFolderExists(std::string_view hostPath) {
    const auto slash = hostPath.find_last_of('/');
    std::string parent;
    if (slash == std::string_view::npos) {
        parent = ".";
    } else if (slash == 0) {
        parent = "/";
    } else {
        parent = std::string(hostPath.substr(0, slash));
    }
    struct stat st {};
    return ::stat(parent.c_str(), &st) == 0 && S_ISDIR(st.st_mode);
}

bool LiesUnderDev(std::string_view hostPath) {
    std::string whole;
    if (hostPath.substr(0, 1) != "/") {
        char cwd[4096];
        if (::getcwd(cwd, sizeof cwd) == nullptr) return false;
        whole = std::string(cwd) + "/";
    }
    whole += hostPath;
    std::vector<std::string_view> parts;
    const std::string_view all = whole;
    for (std::size_t at = 0; at <= all.size();) {
        const std::size_t end = std::min(all.find('/', at), all.size());
        const std::string_view part = all.substr(at, end - at);
        if (part == "..") {
            if (!parts.empty()) parts.pop_back();
        } else if (!part.empty() && part != ".") {
            parts.push_back(part);
        }
        at = end + 1;
    }
    return parts.size() >= 2 && parts.front() == "dev";
}

std::int16_t FileErrorFromErrno(int errnum, std::string_view hostPath) {
    switch (errnum) {
        case ENOENT:
            if (LiesUnderDev(hostPath)) return kErrDeviceUnavailable;
            return ParentFolderExists(hostPath) ? kErrFileNotFound : kErrPathNotFound;
        case ENXIO:
        case ENODEV:
            return kErrDeviceUnavailable;
        case EIO:
        case EPIPE:
            return kErrDeviceIo;
        case ENOTDIR:
            return kErrPathNotFound;
        case EACCES:
        case EPERM:
        case EROFS:
        case ETXTBSY:
            return kErrPermissionDenied;
        case ENOSPC:
        case EDQUOT:
        case EFBIG:
            return kErrDiskFull;
        case ENAMETOOLONG:
        case EBADF:
            return kErrBadFileNameOrNumber;
        default:
            return kErrPathFileAccess;
    }
}

}  // namespace lumbra::platform
