#include "tools/cycle_command.h"

#include <string>

#include "app/LumbraGb.h"
#include "app/device_actions.h"
#include "platform/stop_signals.h"
#include "tools/exit_status.h"
#include "tools/listing.h"
#include "tools/tool_console.h"
#include "tools/tool_text.h"

namespace lumbra::ctl {
namespace {

// The step and the command it sends.
void ShowProgress(int step, const std::string& command) {
    ShowStatusLine("ciclo " + std::to_string(step) + "/" + std::to_string(kCycleSends) + ": " +
                   ListingField(command));
}

}  // namespace

int RunCycleCommand(const ConsoleMsgSink& sink) {
    const bool progress = IsTerminal(stderr);
    int step = 0;
    CycleHooks hooks;
    if (progress) hooks.shown = [&step](const std::string& t) { ShowProgress(++step, t); };
    hooks.stopped = [&sink] { return platform::StopRequested() || sink.boxes() > 0; };
    hooks.send = [] { SendDrawerCommand(); };
    const int sends = RunDrawerCycle(Gb().gavIdx, hooks);
    EndStatusLine();

    if (platform::StopRequested()) {
        PrintLine(stderr, "lumbractl: ciclo interrompido depois de " + std::to_string(sends) +
                              " de " + std::to_string(kCycleSends) + " envios");
        return StoppedBySignalStatus();
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
