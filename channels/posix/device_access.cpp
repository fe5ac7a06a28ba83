#include "channels/posix/device_access.h"

#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

#include "channels/serial_device.h"
#include "platform/file_handles.h"
#include "platform/host_text.h"
#include "platform/posix/accounts.h"
#include "platform/posix/file_errors.h"

namespace lumbra {

std::string DeviceAccessProblem(std::int16_t port, const std::string& path) {
    const std::string label = PortLabel(port, path);
    const std::string host = platform::HostPath(path);
    struct stat st {};
    if (::stat(host.c_str(), &st) != 0) {
        if (errno == ENOENT || errno == ENOTDIR) return label + " n\xE3o existe";
        return label + " inacess\xEDvel: " +
               platform::ErrDescription(platform::FileErrorFromErrno(errno, host));
    }
    if (!S_ISCHR(st.st_mode)) return label + " n\xE3o \xE9 um dispositivo s\xE9rie";
    if (::access(host.c_str(), R_OK | W_OK) == 0) return {};

    const mode_t groupRw = S_IRGRP | S_IWGRP;
    if ((st.st_mode & groupRw) == groupRw) {
        return label + " sem permiss\xE3o: o utilizador tem de estar no grupo \"" +
               platform::GroupName(st.st_gid) + "\"";
    }
    return label + " sem permiss\xE3o: s\xF3 o dono \"" + platform::UserName(st.st_uid) +
           "\" a pode usar";
}

}  // namespace lumbra
