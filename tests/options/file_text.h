#pragma once
// Building parameter-file text and looking at the folder it was written to.

#include <cstddef>
#include <filesystem>
#include <initializer_list>
#include <string>
#include <string_view>

#include "tests/support/temp_dir.h"

namespace lumbra::test {

// The lines joined, each ended by CR LF, as the engine writes them.
inline std::string Lines(std::initializer_list<std::string_view> lines) {
    std::string bytes;
    for (const std::string_view line : lines) {
        bytes += line;
        bytes += "\r\n";
    }
    return bytes;
}

// How many entries the folder holds: a whole-file write must leave no temporary file behind.
inline std::size_t FilesIn(const TempDir& dir) {
    std::size_t n = 0;
    for (const auto& entry : std::filesystem::directory_iterator(dir.path())) {
        (void)entry;
        ++n;
    }
    return n;
}

}  // namespace lumbra::test
