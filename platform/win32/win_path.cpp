#include "platform/win32/win_path.h"

#include <windows.h>

#include "platform/win32/device_names.h"
#include "platform/win32/wide_text.h"

namespace lumbra::platform {
namespace {

// Folders are limited to 12 characters less than files (room for an 8.3 name inside them).
constexpr std::size_t kClassicLimit = MAX_PATH - 12;

}  // namespace

std::wstring WinPath(std::string_view path) {
    std::wstring wide = ToWide(path);
    // Inside "\\?\" every character is taken literally, "/" included.
    if (wide.starts_with(L"\\\\?\\")) return wide;
    for (wchar_t& c : wide) {
        if (c == L'/') c = L'\\';
    }
    if (wide.size() < kClassicLimit || NamesDevice(path)) return wide;
    const DWORD need = ::GetFullPathNameW(wide.c_str(), 0, nullptr, nullptr);
    if (need == 0) return wide;
    std::wstring full(need, L'\0');
    const DWORD got = ::GetFullPathNameW(wide.c_str(), need, full.data(), nullptr);
    if (got == 0 || got >= need) return wide;
    full.resize(got);
    if (full.size() < kClassicLimit) return full;
    if (full.starts_with(L"\\\\")) return L"\\\\?\\UNC\\" + full.substr(2);
    return L"\\\\?\\" + full;
}

}  // namespace lumbra::platform
