#pragma once
// Which names stand for devices rather than files on Windows. A device is opened as it is, never
// created, so that writing to a port or printer that is not there cannot leave a plain file of its
// name that every later write would "succeed" on.

#include <string_view>

namespace lumbra::platform {

// Whether path names a device: a reserved name (CON, PRN, AUX, NUL, COM1 to COM9, LPT1 to LPT9,
// in any case, with or without ":" or an extension, in any folder, as Windows reads it), a name in
// the device space ("\\.\COM12", "\\.\pipe\x"), or a share of another computer named without any
// folder of it ("\\PC\EPSON", a shared printer). "/" separates as "\" does.
bool NamesDevice(std::string_view path);

}  // namespace lumbra::platform
