#include "platform/program.h"

#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cstdlib>
#include <memory>
#include <vector>

#include "platform/host_text.h"
#include "platform/program_args.h"

namespace lumbra::platform {
namespace {

// The folder part of a host path: "" when it has none, "/" for the root.
std::string FolderOf(const std::string& hostPath) {
    const auto slash = hostPath.find_last_of('/');
    if (slash == std::string::npos) return "";
    if (slash == 0) return "/";
    return hostPath.substr(0, slash);
}

// A file the shell would run: a regular file this user may execute.
bool IsExecutableFile(const std::string& path) {
    struct stat st {};
    return ::stat(path.c_str(), &st) == 0 && S_ISREG(st.st_mode) &&
           ::access(path.c_str(), X_OK) == 0;
}

std::string RealPath(const std::string& path) {
    const std::unique_ptr<char, decltype(&std::free)> real(::realpath(path.c_str(), nullptr),
                                                           &std::free);
    return real ? std::string(real.get()) : std::string();
}

std::string ExecutablePath() {
    std::array<char, 4096> buf{};
    const ssize_t len = ::readlink("/proc/self/exe", buf.data(), buf.size() - 1);
    if (len > 0) return std::string(buf.data(), static_cast<std::size_t>(len));
    // Without /proc (a chroot, some containers) the name the program was started by is followed
    // to the real file, so that a program reached through a link still finds its own folder.
    if (RecordedArgs().empty()) return {};
    const char* path = std::getenv("PATH");
    const std::string name = ToHostText(RecordedArgs().front());
    const std::string file = ProgramFileFromName(name, path != nullptr ? path : "");
    return file.empty() ? name : file;
}

}  // namespace

void SetProgramArgs(int argc, const char* const* argv) {
    RecordedArgs().clear();
    for (int i = 0; i < argc; ++i) {
        if (argv[i] != nullptr) RecordedArgs().push_back(FromHostText(argv[i]));
    }
}

std::string ProgramFolder() {
    if (!ProgramFolderOverride().empty()) return ProgramFolderOverride();
    std::string folder = FolderOf(ExecutablePath());
    if (folder.empty()) {
        std::array<char, 4096> cwd{};
        if (::getcwd(cwd.data(), cwd.size()) != nullptr) folder = cwd.data();
    }
    return FromHostText(folder);
}

std::string ProgramFileFromName(const std::string& name, const std::string& searchPath) {
    if (name.empty()) return {};
    if (name.find('/') != std::string::npos)
        return IsExecutableFile(name) ? RealPath(name) : std::string();
    std::size_t begin = 0;
    while (begin <= searchPath.size()) {
        std::size_t end = searchPath.find(':', begin);
        if (end == std::string::npos) end = searchPath.size();
        // An empty entry is the current folder, as for the shell.
        const std::string folder = end > begin ? searchPath.substr(begin, end - begin) : ".";
        const std::string candidate = folder + "/" + name;
        if (IsExecutableFile(candidate)) return RealPath(candidate);
        begin = end + 1;
    }
    return {};
}

}  // namespace lumbra::platform
