// lumbractl: the window's device actions from the command line.

#include "platform/program.h"
#include "tools/lumbractl.h"
#include "tools/tool_console.h"

int main(int argc, char** argv) {
    lumbra::platform::SetProgramArgs(argc, argv);
    return lumbra::ctl::RunLumbraCtl(lumbra::ctl::ToolArguments(argc, argv));
}
