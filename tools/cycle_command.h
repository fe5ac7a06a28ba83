#pragma once
// "lumbractl ciclo": the window's "Ciclo" on the selected rows (Gb().ligIdx and gavIdx).

#include "tools/console_msg_sink.h"

namespace lumbra::ctl {

// Runs the drawer cycle, 338 sends of the selected mode's command with its placeholders swept,
// through the same steps as the window. Progress goes to standard error when that is a terminal.
// Ctrl+C, SIGTERM or SIGHUP ends the cycle after the send under way (StoppedBySignalStatus: a send
// that is waiting for its device gives up at once); so does a send that failed, since the ones
// after it would only fail again (kExitChannelFailed). Returns the exit status.
int RunCycleCommand(const ConsoleMsgSink& sink);

}  // namespace lumbra::ctl
