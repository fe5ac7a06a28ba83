#pragma once
// The command line of lumbractl:
//
//     lumbractl [-FP FILE] [-COMn DEVICE]... COMMAND [OPTIONS]
//
// "-FP" and "-COMn" belong to the engine and the serial ports, which read them from the program's
// command line; they are kept apart here, so that only they reach that reading and a text such as
// --texto "-FP x" cannot be taken for one. Everything else is the tool's own. Texts stay as they
// arrived (UTF-8); turning them into Windows-1252 is a later step.

#include <map>
#include <string>
#include <vector>

namespace lumbra::ctl {

struct ToolArgs {
    // The program's name, then every "-FP"/"-COMn" switch with its value, in the order given.
    std::vector<std::string> engineArgs;
    std::string command;  // "" when none was given
    // Options of the command with their values, by name ("--porta" -> "2"); the last one given
    // wins.
    std::map<std::string, std::string> options;
    bool bytes = false;
    bool json = false;  // simular: one JSON object per line
    bool help = false;
    bool version = false;

    // The value of option name, or fallback when it was not given.
    std::string option(const std::string& name, const std::string& fallback = "") const;
    bool has(const std::string& name) const { return options.count(name) != 0; }
};

struct ParsedArgs {
    ToolArgs args;
    // Why the command line cannot be used, in one line (Windows-1252); "" when it can.
    std::string error;
};

ParsedArgs ParseToolArgs(int argc, const char* const* argv);

// The commands, in the order the help lists them.
const std::vector<std::string>& ToolCommands();
// True for the commands that send to a device (and so accept --bytes).
bool SendsToDevice(const std::string& command);
// True for the commands that read the parameter file.
bool NeedsConfiguration(const std::string& command);

}  // namespace lumbra::ctl
