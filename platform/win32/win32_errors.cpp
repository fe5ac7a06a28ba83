#include "platform/win32/win32_errors.h"

#include "platform/file_handles.h"
#include "platform/win32/device_names.h"

namespace lumbra::platform {

std::int16_t FileErrorFromWin32(DWORD error, std::string_view path) {
    switch (error) {
        case ERROR_FILE_NOT_FOUND:
            return NamesDevice(path) ? kErrDeviceUnavailable : kErrFileNotFound;
        case ERROR_PATH_NOT_FOUND:
        case ERROR_BAD_NETPATH:
        case ERROR_BAD_NET_NAME:
        case ERROR_NETWORK_UNREACHABLE:
        case ERROR_INVALID_DRIVE:
        case ERROR_DIRECTORY:  // a file where a folder on the way should be
            return NamesDevice(path) ? kErrDeviceUnavailable : kErrPathNotFound;
        case ERROR_NOT_READY:
        case ERROR_DEV_NOT_EXIST:
        case ERROR_DEVICE_NOT_CONNECTED:
        case ERROR_NOT_CONNECTED:
        case ERROR_PIPE_BUSY:
        case ERROR_OUT_OF_PAPER:
        case ERROR_PRINTER_DELETED:
        case ERROR_FILE_OFFLINE:
            return kErrDeviceUnavailable;
        case ERROR_ACCESS_DENIED:
        case ERROR_WRITE_PROTECT:
        case ERROR_NETWORK_ACCESS_DENIED:
            return kErrPermissionDenied;
        case ERROR_SHARING_VIOLATION:
        case ERROR_LOCK_VIOLATION:
        case ERROR_ALREADY_EXISTS:
        case ERROR_FILE_EXISTS:
        case ERROR_DIR_NOT_EMPTY:
            return kErrPathFileAccess;
        case ERROR_DISK_FULL:
        case ERROR_HANDLE_DISK_FULL:
            return kErrDiskFull;
        case ERROR_INVALID_NAME:
        case ERROR_BAD_PATHNAME:
        case ERROR_FILENAME_EXCED_RANGE:
        case ERROR_INVALID_HANDLE:
            return kErrBadFileNameOrNumber;
        case ERROR_HANDLE_EOF:
            return kErrInputPastEnd;
        case ERROR_SEM_TIMEOUT:
            return kErrDeviceTimeout;
        case ERROR_OPERATION_ABORTED:
            return kErrUserInterrupt;
        case ERROR_INVALID_FUNCTION:  // a device that cannot do what was asked
        case ERROR_BROKEN_PIPE:
        case ERROR_NO_DATA:
        case ERROR_PIPE_NOT_CONNECTED:
        case ERROR_GEN_FAILURE:
        case ERROR_IO_DEVICE:
        case ERROR_CRC:
        case ERROR_WRITE_FAULT:
        case ERROR_READ_FAULT:
        case ERROR_NETNAME_DELETED:
        case ERROR_UNEXP_NET_ERR:
        case ERROR_COUNTER_TIMEOUT:
            return kErrDeviceIo;
        default:
            return kErrPathFileAccess;
    }
}

}  // namespace lumbra::platform
