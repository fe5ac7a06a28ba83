#pragma once
// Runs a check as an ordinary user. Root is allowed to write files whatever their permissions say,
// so a test of a refused write, run as root, does its work in a child process that has given up
// root first.

#include <functional>

namespace lumbra::test {

// The exit code for "could not give up root": the caller skips its test.
inline constexpr int kCannotDropRoot = 125;

// The value check returns (0..255); run in a child as the user "nobody" when this process is
// root, in this process otherwise.
int RunUnprivileged(const std::function<int()>& check);

}  // namespace lumbra::test
