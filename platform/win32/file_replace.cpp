#include "platform/file_replace.h"

#include <windows.h>

#include "platform/win32/device_names.h"
#include "platform/win32/win32_errors.h"
#include "platform/win32/win_path.h"

namespace lumbra::platform {

bool ReplaceableByRename(const std::string& path) {
    if (path.empty() || NamesDevice(path)) return false;
    const DWORD attributes = ::GetFileAttributesW(WinPath(path).c_str());
    if (attributes == INVALID_FILE_ATTRIBUTES) {
        const DWORD why = ::GetLastError();
        return why == ERROR_FILE_NOT_FOUND || why == ERROR_PATH_NOT_FOUND;
    }
    return (attributes & FILE_ATTRIBUTE_DIRECTORY) == 0;
}

std::int16_t ReplaceFileWith(const std::string& target, const std::string& replacement) {
    const std::wstring from = WinPath(replacement);
    // Only a handle that may write can be flushed.
    const HANDLE handle =
        ::CreateFileW(from.c_str(), GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                      OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (handle == INVALID_HANDLE_VALUE) return FileErrorFromWin32(::GetLastError(), replacement);
    const bool flushed = ::FlushFileBuffers(handle) != 0;
    const DWORD flushError = ::GetLastError();
    ::CloseHandle(handle);
    if (!flushed) return FileErrorFromWin32(flushError, replacement);
    // Write-through: the call returns once the new name is on the disk.
    if (::MoveFileExW(from.c_str(), WinPath(target).c_str(),
                      MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH) == 0)
        return FileErrorFromWin32(::GetLastError(), target);
    return 0;
}

}  // namespace lumbra::platform
