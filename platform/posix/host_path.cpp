#include "platform/host_text.h"

namespace lumbra::platform {

// Parameter files written on Windows name folders with "\"; here the separator is "/".
std::string HostPath(std::string_view path) {
    std::string host = ToHostText(path);
    for (char& c : host) {
        if (c == '\\') c = '/';
    }
    return host;
}

}  // namespace lumbra::platform
