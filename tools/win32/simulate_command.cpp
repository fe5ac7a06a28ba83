#include "tools/simulate_command.h"

#include <cstdio>

#include "tools/exit_status.h"
#include "tools/tool_text.h"

namespace lumbra::ctl {

// The virtual devices sit behind pseudo-terminals, which Windows does not have.
int RunSimular(const OptionTexts&, bool) {
    PrintLine(stderr,
              "lumbractl: simular n\xE3o existe no Windows: os dispositivos virtuais precisam de "
              "pseudo-terminais");
    return kExitUsage;
}

}  // namespace lumbra::ctl
