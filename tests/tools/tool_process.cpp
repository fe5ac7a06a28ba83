#include "tests/tools/tool_process.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <poll.h>
#include <signal.h>
#include <spawn.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <chrono>
#include <cstring>

extern char** environ;

namespace lumbra::test {
namespace {

// The test's environment without what would give the child a display or a Qt platform.
std::vector<std::string> ChildEnvironment() {
    std::vector<std::string> env;
    for (char** e = environ; *e != nullptr; ++e) {
        const std::string entry = *e;
        const std::string name = entry.substr(0, entry.find('='));
        if (name == "QT_QPA_PLATFORM" || name == "DISPLAY" || name == "WAYLAND_DISPLAY" ||
            name == "LC_ALL")
            continue;
        env.push_back(entry);
    }
    env.emplace_back("LC_ALL=C.UTF-8");
    return env;
}

std::vector<char*> Pointers(std::vector<std::string>& texts) {
    std::vector<char*> p;
    for (std::string& t : texts)
        p.push_back(t.data());
    p.push_back(nullptr);
    return p;
}

}  // namespace

ToolProcess::ToolProcess(const std::vector<std::string>& args, int stdoutPipeSize) {
    int outPipe[2];
    int errPipe[2];
    if (::pipe2(outPipe, O_CLOEXEC) != 0 || ::pipe2(errPipe, O_CLOEXEC) != 0) {
        ADD_FAILURE() << "pipe: " << std::strerror(errno);
        return;
    }
    if (stdoutPipeSize > 0) ::fcntl(outPipe[1], F_SETPIPE_SZ, stdoutPipeSize);

    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, 0, "/dev/null", O_RDONLY, 0);
    posix_spawn_file_actions_adddup2(&actions, outPipe[1], 1);
    posix_spawn_file_actions_adddup2(&actions, errPipe[1], 2);

    std::vector<std::string> argv = {LUMBRACTL_PATH};
    argv.insert(argv.end(), args.begin(), args.end());
    std::vector<std::string> env = ChildEnvironment();
    std::vector<char*> argvP = Pointers(argv);
    std::vector<char*> envP = Pointers(env);
    const int rc =
        ::posix_spawn(&pid_, LUMBRACTL_PATH, &actions, nullptr, argvP.data(), envP.data());
    posix_spawn_file_actions_destroy(&actions);
    ::close(outPipe[1]);
    ::close(errPipe[1]);
    out_ = outPipe[0];
    err_ = errPipe[0];
    if (rc != 0) {
        ADD_FAILURE() << "posix_spawn " << LUMBRACTL_PATH << ": " << std::strerror(rc);
        pid_ = -1;
    }
}

ToolProcess::~ToolProcess() {
    if (!finished_ && pid_ > 0) {
        ::kill(pid_, SIGKILL);
        finish();
    }
    if (out_ >= 0) ::close(out_);
    if (err_ >= 0) ::close(err_);
}

std::string ToolProcess::readLine(std::chrono::milliseconds limit) {
    const auto deadline = std::chrono::steady_clock::now() + limit;
    std::string line;
    for (;;) {
        const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(
            deadline - std::chrono::steady_clock::now());
        pollfd p{out_, POLLIN, 0};
        if (left.count() <= 0 || ::poll(&p, 1, static_cast<int>(left.count())) <= 0) return "";
        char c = 0;
        // One byte at a time, so that nothing after the line is taken from the pipe.
        if (::read(out_, &c, 1) != 1) return "";
        if (c == '\n') return line;
        line += c;
    }
}

ToolRun ToolProcess::finish() {
    ToolRun run;
    finished_ = true;
    std::array<pollfd, 2> fds = {pollfd{out_, POLLIN, 0}, pollfd{err_, POLLIN, 0}};
    std::array<std::string*, 2> into = {&run.out, &run.err};
    int open = 2;
    while (open > 0) {
        if (::poll(fds.data(), fds.size(), 120000) <= 0) break;
        for (std::size_t i = 0; i < fds.size(); ++i) {
            if (fds[i].fd < 0 || fds[i].revents == 0) continue;
            std::array<char, 4096> chunk{};
            const ssize_t n = ::read(fds[i].fd, chunk.data(), chunk.size());
            if (n > 0) {
                into[i]->append(chunk.data(), static_cast<std::size_t>(n));
            } else if (n == 0 || errno != EINTR) {
                fds[i].fd = -1;
                --open;
            }
        }
    }
    if (pid_ <= 0) return run;
    int status = 0;
    struct rusage usage {};
    while (::wait4(pid_, &status, 0, &usage) < 0 && errno == EINTR) {
    }
    run.status = WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
    run.peakKb = usage.ru_maxrss;
    return run;
}

ToolRun RunTool(const std::vector<std::string>& args) {
    ToolProcess process(args);
    return process.finish();
}

PtyDrain::PtyDrain(int master) : master_(master), thread_([this] { run(); }) {}

PtyDrain::~PtyDrain() {
    stop_ = true;
    if (thread_.joinable()) thread_.join();
}

std::string PtyDrain::bytes() const {
    const std::lock_guard<std::mutex> lock(mutex_);
    return bytes_;
}

std::string PtyDrain::finish(std::size_t count) {
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(2);
    while (bytes().size() < count && std::chrono::steady_clock::now() < deadline)
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
    stop_ = true;
    if (thread_.joinable()) thread_.join();
    // What the tool wrote before it ended is already at the master side: take it without waiting.
    std::array<char, 4096> chunk{};
    for (ssize_t n = 0; (n = ::read(master_, chunk.data(), chunk.size())) > 0;)
        bytes_.append(chunk.data(), static_cast<std::size_t>(n));
    return bytes();
}

void PtyDrain::run() {
    while (!stop_) {
        pollfd p{master_, POLLIN, 0};
        if (::poll(&p, 1, 10) <= 0) continue;
        std::array<char, 4096> chunk{};
        const ssize_t n = ::read(master_, chunk.data(), chunk.size());
        if (n > 0) {
            const std::lock_guard<std::mutex> lock(mutex_);
            bytes_.append(chunk.data(), static_cast<std::size_t>(n));
        } else {
            // No slave open (EIO) between two sends: wait for the next one.
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
        }
    }
}

}  // namespace lumbra::test
