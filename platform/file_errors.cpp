#include "platform/file_errors.h"

#include <sys/stat.h>

#include <cerrno>
#include <string>

#include "platform/file_handles.h"

namespace lumbra::platform {

std::string ErrDescription(std::int16_t err) {
    switch (err) {
        case kErrBadFileNameOrNumber:
            return "Bad file name or number";
        case kErrFileNotFound:
            return "File not found";
        case kErrFileAlreadyOpen:
            return "File already open";
        case kErrDiskFull:
            return "Disk full";
        case kErrInputPastEnd:
            return "Input past end of file";
        case kErrPermissionDenied:
            return "Permission denied";
        case kErrPathFileAccess:
            return "Path/File access error";
        case kErrPathNotFound:
            return "Path not found";
        default:
            return "Application-defined or object-defined error";
    }
}

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

std::int16_t FileErrorFromErrno(int errnum, std::string_view hostPath) {
    switch (errnum) {
        case ENOENT:
            return ParentFolderExists(hostPath) ? kErrFileNotFound : kErrPathNotFound;
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
