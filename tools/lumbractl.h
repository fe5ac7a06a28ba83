#pragma once
// lumbractl from its command line to its exit status.

#include <string>
#include <vector>

namespace lumbra::ctl {

// Reads the command line (UTF-8 words, the program's name first: tool_console.h), loads the
// configuration when the command needs it, runs the command and returns the exit status (see
// exit_status.h). platform::SetProgramArgs must have been given the program's arguments first.
int RunLumbraCtl(const std::vector<std::string>& args);

}  // namespace lumbra::ctl
