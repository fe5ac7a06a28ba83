#include "tests/support/unprivileged.h"

#include <grp.h>
#include <sys/types.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>

namespace lumbra::test {
namespace {

constexpr uid_t kNobody = 65534;

}  // namespace

int RunUnprivileged(const std::function<int()>& check) {
    if (::geteuid() != 0) return check();
    const pid_t child = ::fork();
    if (child < 0) return kCannotDropRoot;
    if (child == 0) {
        if (::setgroups(0, nullptr) != 0 || ::setgid(kNobody) != 0 || ::setuid(kNobody) != 0) {
            ::_exit(kCannotDropRoot);
        }
        ::_exit(check());
    }
    int status = 0;
    while (::waitpid(child, &status, 0) < 0) {
        if (errno != EINTR) return kCannotDropRoot;
    }
    return WIFEXITED(status) ? WEXITSTATUS(status) : kCannotDropRoot;
}

}  // namespace lumbra::test
