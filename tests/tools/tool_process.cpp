#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <termios.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdlib>
#include <filesystem>

#include "tests/tools/tool_fixture.h"

namespace lumbra::test {

ToolProcess::ToolProcess(const Strings& args, int stdoutPipeSize, const std::string& terminal) {
    int out[2], err[2];
    if (::pipe2(out, O_CLOEXEC) != 0 || ::pipe2(err, O_CLOEXEC) != 0) {
        ADD_FAILURE() << "no pipe";
        return;
    }
    if (stdoutPipeSize > 0) ::fcntl(out[1], F_SETPIPE_SZ, stdoutPipeSize);
    Strings words = Tool().launcher;
    words.insert(words.end(), args.begin(), args.end());
    std::vector<char*> argv;
    for (std::string& w : words)
        argv.push_back(w.data());
    argv.push_back(nullptr);
    pid_ = ::fork();
    if (pid_ == 0) {
        for (const char* name : {"QT_QPA_PLATFORM", "DISPLAY", "WAYLAND_DISPLAY"})
            ::unsetenv(name);
        ::setenv("LC_ALL", "C.UTF-8", 1);
        int in = ::open("/dev/null", O_RDONLY | O_CLOEXEC), to[2] = {out[1], err[1]};
        if (!terminal.empty()) {
            ::setsid();  // the terminal becomes the child's own
            in = to[0] = to[1] = ::open(terminal.c_str(), O_RDWR);
        }
        if (::dup2(in, 0) >= 0 && ::dup2(to[0], 1) >= 0 && ::dup2(to[1], 2) >= 0)
            ::execvp(argv[0], argv.data());
        ::_exit(127);
    }
    EXPECT_GT(pid_, 0) << "no fork";
    ::close(out[1]);
    ::close(err[1]);
    out_ = out[0];
    err_ = err[0];
}

ToolProcess::~ToolProcess() {
    if (pid_ > 0) ::kill(pid_, SIGKILL), finish();
    ::close(out_);
    ::close(err_);
}

bool ToolProcess::holds(const std::string& path) const {
    std::error_code ec;
    for (const auto& fd :
         std::filesystem::directory_iterator("/proc/" + std::to_string(pid_) + "/fd", ec)) {
        if (std::filesystem::read_symlink(fd.path(), ec) == path) return true;
    }
    return false;
}

std::string ToolProcess::readLine(std::chrono::milliseconds limit) {
    const auto deadline = std::chrono::steady_clock::now() + limit;
    std::string line;
    // One byte at a time, so that nothing after the line is taken from the pipe.
    for (char c = 0; c != '\n'; line += c) {
        const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(
            deadline - std::chrono::steady_clock::now());
        pollfd p{out_, POLLIN, 0};
        if (left.count() <= 0 || ::poll(&p, 1, static_cast<int>(left.count())) <= 0 ||
            ::read(out_, &c, 1) != 1)
            return "";
    }
    line.pop_back();
    return line;
}

ToolRun ToolProcess::finish() {
    ToolRun run;
    std::array<pollfd, 2> fds = {pollfd{out_, POLLIN, 0}, pollfd{err_, POLLIN, 0}};
    std::array<std::string*, 2> into = {&run.out, &run.err};
    for (int open = 2; open > 0 && ::poll(fds.data(), fds.size(), 120000) > 0;) {
        for (std::size_t i = 0; i < fds.size(); ++i) {
            if (fds[i].fd < 0 || fds[i].revents == 0) continue;
            std::array<char, 4096> chunk{};
            const ssize_t n = ::read(fds[i].fd, chunk.data(), chunk.size());
            if (n > 0) into[i]->append(chunk.data(), static_cast<std::size_t>(n));
            if (n == 0 || (n < 0 && errno != EINTR)) fds[i].fd = -1, --open;
        }
    }
    if (pid_ <= 0) return run;
    int status = 0;
    rusage usage{};
    while (::wait4(pid_, &status, 0, &usage) < 0 && errno == EINTR) {
    }
    pid_ = -1;
    run.peakKb = usage.ru_maxrss;
    run.status = WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
    return run;
}

unsigned LineSpeed(const std::string& slavePath) {
    const int fd = ::open(slavePath.c_str(), O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC);
    termios settings{};
    const bool known = fd >= 0 && ::tcgetattr(fd, &settings) == 0;
    ::close(fd);
    return known ? static_cast<unsigned>(::cfgetospeed(&settings)) : 0;
}

}  // namespace lumbra::test
