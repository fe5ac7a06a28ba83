#include "tools/tool_console.h"

#include <unistd.h>

namespace lumbra::ctl {

// The terminal takes UTF-8 as it is, and so do pipes and files.
std::vector<std::string> ToolArguments(int argc, char** argv) {
    std::vector<std::string> words;
    for (int i = 0; i < argc; ++i)
        words.emplace_back(argv[i] != nullptr ? argv[i] : "");
    return words;
}

void WriteText(std::FILE* out, std::string_view utf8) {
    std::fwrite(utf8.data(), 1, utf8.size(), out);
    std::fflush(out);
}

bool IsTerminal(std::FILE* out) {
    return ::isatty(::fileno(out)) == 1;
}

}  // namespace lumbra::ctl
