#include "channels/serial_device.h"

#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <vector>

#include "platform/accounts.h"
#include "platform/host_text.h"

namespace lumbra {
namespace {

std::string UpperAscii(std::string tx) {
    for (char& c : tx) {
        if (c >= 'a' && c <= 'z') c = static_cast<char>(c - 'a' + 'A');
    }
    return tx;
}

std::vector<std::string> Words(const std::string& commandLine) {
    std::vector<std::string> words;
    std::string word;
    for (char c : commandLine + ' ') {
        if (c != ' ') {
            word += c;
        } else if (!word.empty()) {
            words.push_back(word);
            word.clear();
        }
    }
    return words;
}

}  // namespace

std::string SerialDevicePath(std::int16_t port, const std::string& commandLine) {
    const std::string wanted = "-COM" + std::to_string(port);
    const std::vector<std::string> words = Words(commandLine);
    for (std::size_t i = 0; i + 1 < words.size(); ++i) {
        if (UpperAscii(words[i]) == wanted) return words[i + 1];
    }
    return "/dev/ttyS" + std::to_string(port - 1);
}

std::string PortLabel(std::int16_t port, const std::string& path) {
    return "Port " + std::to_string(port) + " (" + path + ")";
}

std::string DeviceAccessProblem(std::int16_t port, const std::string& path) {
    const std::string label = PortLabel(port, path);
    const std::string host = platform::HostPath(path);
    struct stat st {};
    if (::stat(host.c_str(), &st) != 0) {
        if (errno == ENOENT || errno == ENOTDIR) return label + " does not exist";
        return label + " cannot be reached: " + std::strerror(errno);
    }
    if (!S_ISCHR(st.st_mode)) return label + " is not a serial device";
    if (::access(host.c_str(), R_OK | W_OK) == 0) return {};

    const mode_t groupRw = S_IRGRP | S_IWGRP;
    if ((st.st_mode & groupRw) == groupRw) {
        return "No permission to use " + label + ": the user must be in the group \"" +
               platform::GroupName(st.st_gid) + "\" that owns it";
    }
    return "No permission to use " + label + ": only its owner \"" + platform::UserName(st.st_uid) +
           "\" may use it";
}

}  // namespace lumbra
