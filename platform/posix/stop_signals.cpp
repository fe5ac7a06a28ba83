#include "platform/stop_signals.h"

#include <fcntl.h>
#include <signal.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <csignal>

namespace lumbra::platform {
namespace {

constexpr std::array<int, 3> kStopSignals = {SIGINT, SIGTERM, SIGHUP};

volatile std::sig_atomic_t caught = 0;
// The self-pipe: the handler writes one byte, an event loop watches the reading end.
int pipeRead = -1;
volatile std::sig_atomic_t pipeWrite = -1;
std::array<struct sigaction, kStopSignals.size()> previous{};

void OnStopSignal(int signo) {
    if (caught == 0) caught = signo;
    const int saved = errno;
    if (pipeWrite >= 0) {
        const char byte = 1;
        // A full pipe already says that a signal came.
        [[maybe_unused]] const ssize_t put = ::write(pipeWrite, &byte, 1);
    }
    errno = saved;
}

}  // namespace

int StopSignal() {
    return caught;
}

bool StopRequested() {
    return caught != 0;
}

int StopSignalDescriptor() {
    return pipeRead;
}

StopSignalCatcher::StopSignalCatcher() {
    caught = 0;
    int fds[2] = {-1, -1};
    if (::pipe2(fds, O_CLOEXEC | O_NONBLOCK) == 0) {
        pipeRead = fds[0];
        pipeWrite = fds[1];
    }
    struct sigaction action {};
    action.sa_handler = OnStopSignal;
    sigemptyset(&action.sa_mask);
    action.sa_flags = 0;
    for (std::size_t i = 0; i < kStopSignals.size(); ++i)
        ::sigaction(kStopSignals[i], &action, &previous[i]);
}

StopSignalCatcher::~StopSignalCatcher() {
    for (std::size_t i = 0; i < kStopSignals.size(); ++i)
        ::sigaction(kStopSignals[i], &previous[i], nullptr);
    const int writeEnd = pipeWrite;
    pipeWrite = -1;
    if (writeEnd >= 0) ::close(writeEnd);
    if (pipeRead >= 0) ::close(pipeRead);
    pipeRead = -1;
    caught = 0;
}

}  // namespace lumbra::platform
