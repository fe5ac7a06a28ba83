#include "platform/program.h"

#include <unistd.h>

#include <array>
#include <vector>

#include "platform/host_text.h"

namespace lumbra::platform {
namespace {

std::vector<std::string>& Args() {
    static std::vector<std::string> args;
    return args;
}

std::string& FolderOverride() {
    static std::string folder;
    return folder;
}

// The folder part of a host path: "" when it has none, "/" for the root.
std::string FolderOf(const std::string& hostPath) {
    const auto slash = hostPath.find_last_of('/');
    if (slash == std::string::npos) return "";
    if (slash == 0) return "/";
    return hostPath.substr(0, slash);
}

std::string ExecutablePath() {
    std::array<char, 4096> buf{};
    const ssize_t len = ::readlink("/proc/self/exe", buf.data(), buf.size() - 1);
    if (len > 0) return std::string(buf.data(), static_cast<std::size_t>(len));
    // Without /proc the name the program was started by is the best we have.
    return Args().empty() ? std::string() : ToHostText(Args().front());
}

}  // namespace

void SetProgramArgs(int argc, const char* const* argv) {
    Args().clear();
    for (int i = 0; i < argc; ++i) {
        if (argv[i] != nullptr) Args().push_back(FromHostText(argv[i]));
    }
}

std::string CommandLine() {
    std::string line;
    for (std::size_t i = 1; i < Args().size(); ++i) {
        if (i > 1) line += ' ';
        line += Args()[i];
    }
    return line;
}

std::string ProgramFolder() {
    if (!FolderOverride().empty()) return FolderOverride();
    std::string folder = FolderOf(ExecutablePath());
    if (folder.empty()) {
        std::array<char, 4096> cwd{};
        if (::getcwd(cwd.data(), cwd.size()) != nullptr) folder = cwd.data();
    }
    return FromHostText(folder);
}

void OverrideProgramFolder(const std::string& folder) {
    FolderOverride() = folder;
}

}  // namespace lumbra::platform
