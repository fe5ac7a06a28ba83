#include "platform/host_text.h"

namespace lumbra::platform {

// Windows knows a file by the name the program wrote, "\" or "/" alike; the W functions get it
// through the one codec (win_path.h).
std::string HostPath(std::string_view path) {
    return std::string(path);
}

}  // namespace lumbra::platform
