#pragma once
// lumbractl simular: the virtual receipt printer (with its cash drawer) and pole display on
// pseudo-terminals, shown live until Ctrl+C.

#include "tools/device_commands.h"

namespace lumbra::ctl {

// Creates the devices, prints the -COMn options that map the program's ports to them, then
// prints what the devices do (JSON lines when json) until SIGINT or SIGTERM; returns the exit
// status. Where there are no pseudo-terminals (Windows) it says so: a usage error.
int RunSimular(const OptionTexts& texts, bool json);

}  // namespace lumbra::ctl
