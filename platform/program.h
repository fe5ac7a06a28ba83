#pragma once
// The program's command line and its own folder, as the engine reads them (the command line is
// split into words later, at blanks). Texts are Windows-1252, converted from the host's form.

#include <string>

namespace lumbra::platform {

// Records the arguments main received; called once, first thing in main.
void SetProgramArgs(int argc, const char* const* argv);

// The words after the program's name, joined by one blank each ("" without arguments).
std::string CommandLine();

// The folder of the running program, without a trailing separator ("/" for the root).
std::string ProgramFolder();

// The real file of a program started by the name name: a path as it is, a bare name looked up in
// the folders of searchPath (":"-separated, as PATH) like the shell does; links resolved. "" when
// there is no such executable. Host paths. ProgramFolder uses it where /proc is not mounted.
std::string ProgramFileFromName(const std::string& name, const std::string& searchPath);

// Makes ProgramFolder answer folder instead of the real one ("" returns to the real one); for a
// program that is run from somewhere other than its installed place, such as a test.
void OverrideProgramFolder(const std::string& folder);

}  // namespace lumbra::platform
