#pragma once
// Runs a check as an ordinary user: root may write files whatever their permissions say.

#include <grp.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <functional>

namespace lumbra::test {

// "Could not give up root": the caller skips its test.
inline constexpr int kCannotDropRoot = 125;

// The value check returns (0..255); run in a child as the user "nobody" (65534) when this process
// is root, in this process otherwise.
inline int RunUnprivileged(const std::function<int()>& check) {
    if (::geteuid() != 0) return check();
    const pid_t child = ::fork();
    if (child < 0) return kCannotDropRoot;
    if (child == 0) {
        if (::setgroups(0, nullptr) != 0 || ::setgid(65534) != 0 || ::setuid(65534) != 0)
            ::_exit(kCannotDropRoot);
        ::_exit(check());
    }
    int status = 0;
    while (::waitpid(child, &status, 0) < 0) {
        if (errno != EINTR) return kCannotDropRoot;
    }
    return WIFEXITED(status) ? WEXITSTATUS(status) : kCannotDropRoot;
}

}  // namespace lumbra::test
