#pragma once
// Points serial port numbers at devices the way a technician does, through "-COMn PATH" on the
// program's command line.

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "platform/program.h"

namespace lumbra::test {

inline void MapPorts(const std::vector<std::pair<int, std::string>>& ports) {
    std::vector<std::string> words = {"lumbra"};
    for (const auto& [number, path] : ports) {
        words.push_back("-COM" + std::to_string(number));
        words.push_back(path);
    }
    std::vector<const char*> argv;
    for (const std::string& w : words)
        argv.push_back(w.c_str());
    platform::SetProgramArgs(static_cast<int>(argv.size()), argv.data());
}

}  // namespace lumbra::test
