#pragma once
// The commands that need no parameter file: converter and portas.

#include "tools/device_commands.h"

namespace lumbra::ctl {

// "converter --dec V" or "converter --hex V": what the window's other conversion box would show,
// "Erro" included, on standard output.
int RunConverter(const OptionTexts& texts);

// "portas": the serial ports of this machine on standard output.
int RunPortas();

}  // namespace lumbra::ctl
