#pragma once
// Starting another program without waiting for it: the program and each argument are handed to the
// system as they are, never through a shell, so blanks and shell characters in a file name are
// just part of the name.

#include <functional>
#include <string>
#include <vector>

namespace lumbra::platform {

// program is looked up on the PATH when it has no folder. Texts are Windows-1252. failed is called
// when the program cannot be started, or, from the event loop, when it ends with a status other
// than 0 or by a signal; nothing is said of a program that the application outlives no more. The
// program runs in a session of its own, so a Ctrl+C meant for this one does not reach it. Needs a
// running application object; without one, failed is called at once.
void StartProgram(const std::string& program, const std::vector<std::string>& args,
                  std::function<void()> failed);

}  // namespace lumbra::platform
