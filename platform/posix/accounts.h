#pragma once
// The names of the system's users and groups, for messages that tell a technician whom to ask or
// which group to join.

#include <sys/types.h>

#include <string>

namespace lumbra::platform {

// The group's name; its number as text when the system does not know it.
std::string GroupName(gid_t gid);
// The user's name; the number as text when the system does not know it.
std::string UserName(uid_t uid);

}  // namespace lumbra::platform
