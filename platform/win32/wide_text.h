#pragma once
// The one crossing of the program's text into the Windows API and back: Windows-1252 bytes as
// UTF-16 for the W functions, by our own table (cp1252_table.h), never through the A functions or
// the machine's code page.

#include <string>
#include <string_view>

namespace lumbra::platform {

// Every byte becomes one character, and comes back as the same byte.
std::wstring ToWide(std::string_view text);

// A character Windows-1252 lacks becomes "?" (a pair of surrogates being one character); whole is
// set to false when that happened.
std::string FromWide(std::wstring_view text, bool* whole = nullptr);

}  // namespace lumbra::platform
