#include "tools/cycle_command.h"

#include <unistd.h>

#include <csignal>
#include <string>

#include "app/LumbraGb.h"
#include "app/device_actions.h"
#include "tools/exit_status.h"
#include "tools/listing.h"
#include "tools/tool_text.h"

namespace lumbra::ctl {
namespace {

volatile std::sig_atomic_t interrupted = 0;

void OnInterrupt(int) {
    interrupted = 1;
}

// Catches Ctrl+C while the object lives. Interrupted system calls resume, so the send under way
// completes (or fails) on its own terms.
class InterruptCatcher {
  public:
    InterruptCatcher() {
        interrupted = 0;
        struct sigaction action {};
        action.sa_handler = OnInterrupt;
        sigemptyset(&action.sa_mask);
        action.sa_flags = SA_RESTART;
        ::sigaction(SIGINT, &action, &previous_);
    }
    ~InterruptCatcher() { ::sigaction(SIGINT, &previous_, nullptr); }
    InterruptCatcher(const InterruptCatcher&) = delete;
    InterruptCatcher& operator=(const InterruptCatcher&) = delete;

  private:
    struct sigaction previous_ {};
};

// The step and the command it sends.
void ShowProgress(int step, const std::string& command) {
    ShowStatusLine("ciclo " + std::to_string(step) + "/" + std::to_string(kCycleSends) + ": " +
                   ListingField(command));
}

}  // namespace

int RunCycleCommand(const ConsoleMsgSink& sink) {
    const bool progress = ::isatty(STDERR_FILENO) == 1;
    const InterruptCatcher catcher;
    int step = 0;
    CycleHooks hooks;
    if (progress) hooks.shown = [&step](const std::string& t) { ShowProgress(++step, t); };
    hooks.stopped = [&sink] { return interrupted != 0 || sink.boxes() > 0; };
    hooks.send = [] { SendDrawerCommand(); };
    const int sends = RunDrawerCycle(Gb().gavIdx, hooks);
    EndStatusLine();

    if (interrupted != 0) {
        PrintLine(stderr, "lumbractl: ciclo interrompido depois de " + std::to_string(sends) +
                              " de " + std::to_string(kCycleSends) + " envios");
        return kExitInterrupted;
    }
    if (sink.boxes() > 0) {
        if (sends < kCycleSends) {
            PrintLine(stderr, "lumbractl: ciclo parado depois do envio " + std::to_string(sends) +
                                  ", que falhou");
        }
        return kExitChannelFailed;
    }
    return kExitOk;
}

}  // namespace lumbra::ctl
