#pragma once
// What program.h keeps for the whole run, shared by its host parts (posix/, win32/): the arguments
// as recorded at start, the first being the program's name, and the folder a test made
// ProgramFolder answer.

#include <string>
#include <vector>

namespace lumbra::platform {

std::vector<std::string>& RecordedArgs();
std::string& ProgramFolderOverride();

}  // namespace lumbra::platform
