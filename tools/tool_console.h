#pragma once
// The tool's console on the host it runs on: the words of its command line and its two output
// streams. The tool itself speaks UTF-8 to both; each host turns that into what its console
// shows (posix/, win32/).

#include <cstdio>
#include <string>
#include <string_view>
#include <vector>

namespace lumbra::ctl {

// The program's arguments in UTF-8, its own name first. On Windows they are taken from the
// command line Windows keeps in UTF-16, since argv only holds what the machine's code page can.
std::vector<std::string> ToolArguments(int argc, char** argv);

// Writes UTF-8 text to out (stdout or stderr) at once. A terminal or a console shows the
// characters; a pipe or a file receives the UTF-8 bytes unchanged, line ends as written.
void WriteText(std::FILE* out, std::string_view utf8);

// Whether out is a terminal or a console, on which a status line can be redrawn in place.
bool IsTerminal(std::FILE* out);

}  // namespace lumbra::ctl
