#pragma once
// Replacing a file whole in one step, for writers that must never leave half a file: the new
// content is written to a file beside the target, then put in its place at once, so that an
// interruption at any moment leaves either the old file or the new one.

#include <cstdint>
#include <string>

namespace lumbra::platform {

// Whether path can be replaced by renaming another file over it: it is missing, a plain file or a
// link. A device, a pipe or a folder cannot (it is written in place), nor a name the host cannot
// look at.
bool ReplaceableByRename(const std::string& path);

// Puts the closed file replacement in the place of target: replacement's content is flushed to
// the disk, then it takes target's name in one step, and the new name is made to last a power cut
// as well. 0, or the error number of the step that failed; target is then as it was, and
// replacement is left for the caller to delete.
std::int16_t ReplaceFileWith(const std::string& target, const std::string& replacement);

}  // namespace lumbra::platform
