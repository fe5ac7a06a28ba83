#include "platform/win32/device_names.h"

#include <array>
#include <string>

namespace lumbra::platform {
namespace {

bool IsSeparator(char c) {
    return c == '\\' || c == '/';
}

char Upper(char c) {
    return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
}

// The name without what Windows ignores when it looks for a reserved one: anything from the first
// "." or ":" on, and blanks at its end.
bool IsReservedName(std::string_view name) {
    name = name.substr(0, name.find_first_of(".:"));
    while (!name.empty() && name.back() == ' ')
        name.remove_suffix(1);
    std::string upper;
    for (const char c : name)
        upper += Upper(c);
    static constexpr std::array<std::string_view, 4> kPlain = {"CON", "PRN", "AUX", "NUL"};
    for (const std::string_view reserved : kPlain) {
        if (upper == reserved) return true;
    }
    return upper.size() == 4 && (upper.starts_with("COM") || upper.starts_with("LPT")) &&
           upper[3] >= '1' && upper[3] <= '9';
}

}  // namespace

bool NamesDevice(std::string_view path) {
    if (path.size() >= 4 && IsSeparator(path[0]) && IsSeparator(path[1]) && IsSeparator(path[3])) {
        if (path[2] == '.') return true;   // the device space
        if (path[2] == '?') return false;  // the file space, taken literally
    }
    if (path.size() >= 2 && IsSeparator(path[0]) && IsSeparator(path[1])) {
        // \\server\share and nothing after it: only a printer (or a port) can be opened there.
        const std::string_view rest = path.substr(2);
        const auto first = rest.find_first_of("\\/");
        if (first == 0 || first == std::string_view::npos) return false;
        const std::string_view share = rest.substr(first + 1);
        return !share.empty() && share.find_first_of("\\/") == std::string_view::npos;
    }
    const auto last = path.find_last_of("\\/");
    std::string_view name = last == std::string_view::npos ? path : path.substr(last + 1);
    // "C:NUL" is NUL as well.
    if (last == std::string_view::npos && name.size() >= 2 && name[1] == ':') name.remove_prefix(2);
    return IsReservedName(name);
}

}  // namespace lumbra::platform
