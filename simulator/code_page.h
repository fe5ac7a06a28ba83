#pragma once
// The character sets the virtual devices print and show: one byte in, the character it stands for
// out, as UTF-8.

#include <string>

namespace lumbra::sim {

enum class CodePage { Pc437, Pc850, Pc860, Windows1252 };

// The character of byte in page, as UTF-8. Bytes below 0x80 are ASCII in every page; a byte a page
// leaves undefined gives U+FFFD, so that it shows instead of vanishing.
std::string CharacterUtf8(unsigned char byte, CodePage page);

// The page's usual name ("PC437", "PC850", "PC860", "Windows-1252").
const char* CodePageName(CodePage page);

// Reads a page from its number as technicians write it: "437", "850", "860" or "1252". False for
// anything else.
bool CodePageFromNumber(const std::string& number, CodePage& page);

}  // namespace lumbra::sim
