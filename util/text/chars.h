#pragma once
// Character functions shared by the text procedures. Text is Windows-1252, one byte per character;
// nothing here looks at the C++ or C locale, so the result is the same on every machine.

#include <string>
#include <string_view>

namespace lumbra {

// The upper-case form of one Windows-1252 character: a-z, the accented letters (0xE0-0xFE except
// the division sign) and the few letters of 0x80-0x9F that have a capital; anything else as is.
char UpperChar(char c);

// Every character of tx in upper case (UpperChar).
std::string UpperCase(std::string_view tx);

// tx without its leading and trailing spaces. Only the space counts: tabs stay.
std::string_view TrimBlanks(std::string_view tx);

}  // namespace lumbra
