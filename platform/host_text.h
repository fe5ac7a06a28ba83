#pragma once
// Where the program's Windows-1252 text meets the host's own: file names, the command line and the
// program's folder. On this kind of host those are UTF-8 and use "/" between folders; parameter
// files are often written Windows-style with "\", which is read as a separator here as well.

#include <string>
#include <string_view>

namespace lumbra::platform {

// Windows-1252 bytes as UTF-8. The five bytes Windows-1252 leaves undefined (0x81, 0x8D, 0x8F,
// 0x90, 0x9D) become the control characters of the same number, so every byte comes back.
std::string ToHostText(std::string_view text);

// UTF-8 as Windows-1252 bytes; a character Windows-1252 cannot hold becomes "?". Bytes that are
// not UTF-8 are kept as they are: they already are the one-byte form.
std::string FromHostText(std::string_view text);

// The name under which the host's file system knows path: its text in the host's form, with "\"
// turned into "/" where the host separates folders with "/".
std::string HostPath(std::string_view path);

}  // namespace lumbra::platform
