#include "tools/exit_status.h"

#include <cstdio>

#include "platform/stop_signals.h"
#include "tools/help_text.h"
#include "tools/tool_text.h"

namespace lumbra::ctl {

int StoppedBySignalStatus() {
    const int signo = platform::StopSignal();
    return signo != 0 ? 128 + signo : kExitInterrupted;
}

int ReportUsageError(const std::string& reason) {
    PrintLine(stderr, "lumbractl: " + reason);
    std::string usage = UsageText();
    if (!usage.empty() && usage.back() == '\n') usage.pop_back();
    PrintLine(stderr, usage);
    return kExitUsage;
}

}  // namespace lumbra::ctl
