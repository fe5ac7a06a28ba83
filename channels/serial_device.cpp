#include "channels/serial_device.h"

#include <vector>

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
    return DefaultSerialDevice(port);
}

std::string PortLabel(std::int16_t port, const std::string& path) {
    return "Porta " + std::to_string(port) + " (" + path + ")";
}

}  // namespace lumbra
