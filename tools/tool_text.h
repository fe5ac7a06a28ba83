#pragma once
// Text at the tool's edges: arguments arrive in UTF-8 and the program works in Windows-1252;
// whatever the tool prints leaves in UTF-8 again, for the console to show (tool_console.h).

#include <cstdio>
#include <string>
#include <string_view>

namespace lumbra::ctl {

// The Windows-1252 bytes of a UTF-8 argument. False (and bytes undefined) when a character has no
// byte in Windows-1252, or the argument is not UTF-8: such a text must be refused, never sent as
// something else.
bool ArgumentToCp1252(std::string_view utf8, std::string& bytes);

// The characters of a UTF-8 argument that Windows-1252 cannot hold, by code point ("U+65E5"),
// separated by blanks: they cannot be quoted in the tool's own Windows-1252 messages.
std::string UnencodableCharacters(std::string_view utf8);

// Writes Windows-1252 text to out as UTF-8, followed by a line end. On standard error it first
// ends a status line that is showing, so that the two do not run into each other.
void PrintLine(std::FILE* out, std::string_view cp1252);

// Shows a line of progress (UTF-8) on standard error, a terminal or a console, in place of the one
// before.
void ShowStatusLine(std::string_view utf8);
// Ends the status line, if one is showing, so that the terminal's next line starts clean.
void EndStatusLine();

}  // namespace lumbra::ctl
