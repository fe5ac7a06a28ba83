#pragma once
// Reading a parameter file for what the tool says about it, on the host's own terms (posix/,
// win32/): the engine has already read it; these reads never change what it did.

#include <functional>
#include <string>
#include <string_view>

namespace lumbra::ctl {

// Reads the regular file at hostPath once from start to end, handing each chunk to take. Anything
// that is not a regular file (a pipe, whose bytes the engine has already taken; a device) is not
// read; false then, and when the file cannot be opened.
bool ReadRegularFile(const std::string& hostPath,
                     const std::function<void(std::string_view chunk)>& take);

}  // namespace lumbra::ctl
