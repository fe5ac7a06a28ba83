#pragma once
// What lumbractl tells about the parameter file besides what the engine shows: why it cannot be
// read, and what in it the engine passes over without a word (over-long lines, the encoding).

#include <cstdint>
#include <string>

namespace lumbra::ctl {

// Why the file at hostPath cannot be read as a parameter file, in Portuguese (Windows-1252): it
// does not exist, is a folder, may not be read, is a loop of links, is a device; "" when it can be
// opened for reading. Each host asks its own file system (posix/, win32/).
std::string UnreadableReason(const std::string& hostPath);

struct ParameterFileScan {
    // Lines longer than the engine can count in: they are kept whole, but an "=" past the 32767th
    // character no longer parts name from value.
    std::int64_t longLines = 0;
    // Non-ASCII bytes that all form UTF-8 sequences: accents written by a UTF-8 editor, which the
    // program reads as two Windows-1252 characters each.
    bool utf8 = false;
};

// Reads a regular file once from start to end (regular_file.h). Anything that is not a regular
// file (a pipe, whose bytes the engine has already taken) is not read and gives the empty scan.
ParameterFileScan ScanParameterFile(const std::string& hostPath);

}  // namespace lumbra::ctl
