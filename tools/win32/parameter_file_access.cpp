#include <windows.h>

#include <vector>

#include "platform/win32/device_names.h"
#include "platform/win32/win_path.h"
#include "tools/parameter_file_check.h"
#include "tools/regular_file.h"

namespace lumbra::ctl {
namespace {

constexpr DWORD kShareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;

HANDLE OpenToRead(const std::string& hostPath) {
    return ::CreateFileW(platform::WinPath(hostPath).c_str(), GENERIC_READ, kShareAll, nullptr,
                         OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
}

}  // namespace

std::string UnreadableReason(const std::string& hostPath) {
    // Not even opened: opening a port already takes it from everyone else.
    if (platform::NamesDevice(hostPath)) return "\xE9 um dispositivo, n\xE3o um ficheiro";
    const DWORD attributes = ::GetFileAttributesW(platform::WinPath(hostPath).c_str());
    if (attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0)
        return "\xE9 uma pasta";
    const HANDLE file = OpenToRead(hostPath);
    if (file == INVALID_HANDLE_VALUE) {
        switch (::GetLastError()) {
            case ERROR_FILE_NOT_FOUND:
            case ERROR_PATH_NOT_FOUND:
            case ERROR_INVALID_DRIVE:
            case ERROR_BAD_NETPATH:
            case ERROR_BAD_NET_NAME:
            case ERROR_DIRECTORY:  // a file where a folder on the way should be
                return "n\xE3o existe";
            case ERROR_ACCESS_DENIED:
                return "sem permiss\xE3o de leitura";
            case ERROR_CANT_RESOLVE_FILENAME:
                return "as liga\xE7\xF5"
                       "es simb\xF3licas do caminho formam um ciclo";
            default:
                return {};
        }
    }
    const DWORD type = ::GetFileType(file);
    ::CloseHandle(file);
    if (type == FILE_TYPE_CHAR) return "\xE9 um dispositivo, n\xE3o um ficheiro";
    return {};
}

bool ReadRegularFile(const std::string& hostPath,
                     const std::function<void(std::string_view chunk)>& take) {
    if (platform::NamesDevice(hostPath)) return false;
    const HANDLE file = OpenToRead(hostPath);
    if (file == INVALID_HANDLE_VALUE) return false;
    if (::GetFileType(file) != FILE_TYPE_DISK) {
        ::CloseHandle(file);
        return false;
    }
    std::vector<char> chunk(64 * 1024);
    DWORD got = 0;
    while (::ReadFile(file, chunk.data(), static_cast<DWORD>(chunk.size()), &got, nullptr) != 0 &&
           got > 0)
        take(std::string_view(chunk.data(), got));
    ::CloseHandle(file);
    return true;
}

}  // namespace lumbra::ctl
