#include "platform/posix/accounts.h"

#include <grp.h>
#include <pwd.h>

#include <vector>

namespace lumbra::platform {

std::string GroupName(gid_t gid) {
    std::vector<char> buffer(4096);
    group entry{};
    group* found = nullptr;
    if (::getgrgid_r(gid, &entry, buffer.data(), buffer.size(), &found) == 0 && found != nullptr)
        return found->gr_name;
    return std::to_string(gid);
}

std::string UserName(uid_t uid) {
    std::vector<char> buffer(4096);
    passwd entry{};
    passwd* found = nullptr;
    if (::getpwuid_r(uid, &entry, buffer.data(), buffer.size(), &found) == 0 && found != nullptr)
        return found->pw_name;
    return std::to_string(uid);
}

}  // namespace lumbra::platform
