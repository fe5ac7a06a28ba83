#include "tools/exit_status.h"

#include <cstdio>

#include "tools/help_text.h"
#include "tools/tool_text.h"

namespace lumbra::ctl {

int ReportUsageError(const std::string& reason) {
    PrintLine(stderr, "lumbractl: " + reason);
    std::string usage = UsageText();
    if (!usage.empty() && usage.back() == '\n') usage.pop_back();
    PrintLine(stderr, usage);
    return kExitUsage;
}

}  // namespace lumbra::ctl
