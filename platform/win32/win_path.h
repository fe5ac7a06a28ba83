#pragma once
// The program's file names (Windows-1252, "/" or "\" between folders) as the W functions take them.

#include <string>
#include <string_view>

namespace lumbra::platform {

// path in UTF-16 with "\" between folders. A name too long for the classic limit of the Windows
// API is made absolute and marked "\\?\", which lifts the limit; a device keeps its name as it is.
std::wstring WinPath(std::string_view path);

}  // namespace lumbra::platform
