// The Linux test program runs the Linux lumbractl.

#include "tests/tools/tool_fixture.h"

namespace lumbra::test {

ToolTarget& Tool() {
    return LinuxTool();
}

}  // namespace lumbra::test
