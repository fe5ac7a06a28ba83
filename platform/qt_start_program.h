#pragma once
// Starting another program without waiting for it: the program and each argument are handed to the
// system as they are, never through a shell, so blanks and shell characters in a file name are
// just part of the name.

#include <string>
#include <vector>

namespace lumbra::platform {

// program is looked up on the PATH when it has no folder. Texts are Windows-1252. Returns false
// when the program could not be started.
bool StartDetached(const std::string& program, const std::vector<std::string>& args);

}  // namespace lumbra::platform
