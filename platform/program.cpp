// The host-independent part of program.h: the recorded arguments and the folder override.

#include "platform/program.h"
#include "platform/program_args.h"

namespace lumbra::platform {

std::vector<std::string>& RecordedArgs() {
    static std::vector<std::string> args;
    return args;
}

std::string& ProgramFolderOverride() {
    static std::string folder;
    return folder;
}

std::string CommandLine() {
    std::string line;
    for (std::size_t i = 1; i < RecordedArgs().size(); ++i) {
        if (i > 1) line += ' ';
        line += RecordedArgs()[i];
    }
    return line;
}

void OverrideProgramFolder(const std::string& folder) {
    ProgramFolderOverride() = folder;
}

}  // namespace lumbra::platform
