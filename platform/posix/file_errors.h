#pragma once
// Turns the host's reasons for a failed file operation into the error numbers the program reports
// (see file_handles.h for the numbers and ErrDescription for their texts).

#include <cstdint>
#include <string_view>

namespace lumbra::platform {

// The error number for errno value errnum met while working on hostPath (the name as the host
// knows it). A missing name is 53 "Ficheiro não encontrado" when its folder exists and 76 "Caminho
// não encontrado" when a folder on the way is missing; under /dev it is 68 "Dispositivo
// indisponível", as is a device without its hardware or a FIFO without a reader.
std::int16_t FileErrorFromErrno(int errnum, std::string_view hostPath);

// Whether hostPath lies under /dev, where names stand for devices: judged on the path as written,
// made absolute against the current folder, with "." and ".." taken away.
bool LiesUnderDev(std::string_view hostPath);

// Whether the folder that would hold hostPath exists.
bool ParentFolderExists(std::string_view hostPath);

}  // namespace lumbra::platform
