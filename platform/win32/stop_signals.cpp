#include "platform/stop_signals.h"

#include <windows.h>

#include <atomic>
#include <csignal>

namespace lumbra::platform {
namespace {

// Windows asks a console program to stop with console events rather than signals. Each is
// recorded under the number of the signal that asks the same on other hosts, so that whoever turns
// the stop into an exit status (128 + number) needs to know no host: Ctrl+C is SIGINT and
// Ctrl+Break SIGBREAK, as the C runtime numbers them; the console going away is SIGHUP, the end of
// the session SIGTERM, and the machine shutting down SIGPWR.
constexpr int kConsoleClosed = 1;
constexpr int kLoggedOff = SIGTERM;
constexpr int kShuttingDown = 30;

int NumberOf(DWORD event) {
    switch (event) {
        case CTRL_C_EVENT:
            return SIGINT;
        case CTRL_BREAK_EVENT:
            return SIGBREAK;
        case CTRL_CLOSE_EVENT:
            return kConsoleClosed;
        case CTRL_LOGOFF_EVENT:
            return kLoggedOff;
        case CTRL_SHUTDOWN_EVENT:
            return kShuttingDown;
        default:
            return 0;
    }
}

// The handler runs on a thread of its own that Windows starts for each event.
std::atomic<int> caught{0};
// Signalled while no catcher lives: until the catcher goes a closing console waits for the
// program. One for the whole run, made on first use.
HANDLE Released() {
    static const HANDLE event = ::CreateEventW(nullptr, TRUE, TRUE, nullptr);
    return event;
}

BOOL WINAPI OnConsoleEvent(DWORD event) {
    const int number = NumberOf(event);
    if (number == 0) return FALSE;
    int none = 0;
    caught.compare_exchange_strong(none, number);
    // Windows ends the program as soon as the handler of these returns: it waits here, while the
    // program closes its ports, until the catcher goes or Windows' own time is up.
    if (event == CTRL_CLOSE_EVENT || event == CTRL_LOGOFF_EVENT || event == CTRL_SHUTDOWN_EVENT) {
        if (Released() != nullptr) ::WaitForSingleObject(Released(), INFINITE);
    }
    return TRUE;
}

}  // namespace

int StopSignal() {
    return caught.load();
}

bool StopRequested() {
    return caught.load() != 0;
}

int StopSignalDescriptor() {
    return -1;
}

StopSignalCatcher::StopSignalCatcher() {
    caught = 0;
    if (Released() != nullptr) ::ResetEvent(Released());
    ::SetConsoleCtrlHandler(OnConsoleEvent, TRUE);
}

StopSignalCatcher::~StopSignalCatcher() {
    ::SetConsoleCtrlHandler(OnConsoleEvent, FALSE);
    // Handlers still waiting go back to Windows, which then ends the program.
    if (Released() != nullptr) ::SetEvent(Released());
    caught = 0;
}

}  // namespace lumbra::platform
