#pragma once
// Turns the reasons Windows gives for a failed file operation into the error numbers the program
// reports (file_handles.h), the same numbers the other hosts give for the same situations.

#include <windows.h>

#include <cstdint>
#include <string_view>

namespace lumbra::platform {

// The error number for the Windows error code error met while working on path (the program's
// name for it). A name that is missing is 53 "Ficheiro não encontrado", a folder on the way that
// is missing 76 "Caminho não encontrado"; for a device (device_names.h) either is 68 "Dispositivo
// indisponível", as is a device that is not ready or not connected. Access refused is 70, a file
// another program holds 75, as the other hosts' refusal of a file held open.
std::int16_t FileErrorFromWin32(DWORD error, std::string_view path);

}  // namespace lumbra::platform
