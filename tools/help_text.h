#pragma once
// What lumbractl says about itself, in Portuguese like the window; Windows-1252, each text ending
// in a line end.

#include <string>

namespace lumbra::ctl {

// The usage line and where to find more, for the end of a usage error.
std::string UsageText();
// --help without a command.
std::string ToolHelp();
// COMMAND --help; the tool's help for a command it does not know.
std::string CommandHelp(const std::string& command);
// --version: the program's name and the project's version.
std::string VersionText();

}  // namespace lumbra::ctl
