#pragma once
// Deleting files and creating folders, with failures as the host's error numbers (file_handles.h).

#include <cstdint>
#include <string>

namespace lumbra::platform {

// Deletes the file path; 0 or the error number. Only plain files (and links) are deleted: a
// folder, a device or a file that is open under a number is refused with 75, so that writing to a
// device never removes it.
std::int16_t FileDelete(const std::string& path);

// Creates the one folder path; 0 or the error number (75 when it already exists, 76 when the
// folder that would hold it is missing).
std::int16_t DirCreate(const std::string& path);

}  // namespace lumbra::platform
