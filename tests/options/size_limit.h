#pragma once
// A limit on the size of the files the process writes, which makes the host refuse a write part
// way as a full disk does.

#include <signal.h>
#include <sys/resource.h>

#include <functional>

namespace lumbra::test {

// Runs work with files limited to 4 KiB when limited is true.
inline void WithSizeLimit(bool limited, const std::function<void()>& work) {
    struct sigaction ignore {};
    ignore.sa_handler = SIG_IGN;
    struct sigaction previous {};
    ::sigaction(SIGXFSZ, &ignore, &previous);
    rlimit old{};
    ::getrlimit(RLIMIT_FSIZE, &old);
    rlimit small = old;
    if (limited) small.rlim_cur = 4096;
    ::setrlimit(RLIMIT_FSIZE, &small);
    work();
    ::setrlimit(RLIMIT_FSIZE, &old);
    ::sigaction(SIGXFSZ, &previous, nullptr);
}

}  // namespace lumbra::test
