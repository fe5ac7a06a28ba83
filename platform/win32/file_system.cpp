#include "platform/file_system.h"

#include <windows.h>

#include "platform/file_handles.h"
#include "platform/win32/device_names.h"
#include "platform/win32/win32_errors.h"
#include "platform/win32/win_path.h"

namespace lumbra::platform {

std::int16_t FileDelete(const std::string& path) {
    if (path.empty()) return kErrBadFileNameOrNumber;
    // Writing to a device never removes it.
    if (NamesDevice(path)) return kErrPathFileAccess;
    const std::wstring name = WinPath(path);
    const DWORD attributes = ::GetFileAttributesW(name.c_str());
    if (attributes == INVALID_FILE_ATTRIBUTES) return FileErrorFromWin32(::GetLastError(), path);
    if ((attributes & FILE_ATTRIBUTE_DIRECTORY) != 0 || FileHeldOpen(path))
        return kErrPathFileAccess;
    if (::DeleteFileW(name.c_str()) == 0) return FileErrorFromWin32(::GetLastError(), path);
    return 0;
}

std::int16_t DirCreate(const std::string& path) {
    if (path.empty()) return kErrBadFileNameOrNumber;
    // A folder named as a device would pass for the device.
    if (NamesDevice(path)) return kErrPathFileAccess;
    const std::wstring name = WinPath(path);
    if (::CreateDirectoryW(name.c_str(), nullptr) != 0) return 0;
    const DWORD why = ::GetLastError();
    switch (why) {
        case ERROR_ALREADY_EXISTS:
            return kErrPathFileAccess;
        case ERROR_ACCESS_DENIED:
            // A drive's root is refused so, though it exists like any other folder.
            return ::GetFileAttributesW(name.c_str()) != INVALID_FILE_ATTRIBUTES
                       ? kErrPathFileAccess
                       : kErrPermissionDenied;
        case ERROR_FILE_NOT_FOUND:
        case ERROR_PATH_NOT_FOUND:
        case ERROR_DIRECTORY:
            return kErrPathNotFound;
        default:
            return FileErrorFromWin32(why, path);
    }
}

}  // namespace lumbra::platform
