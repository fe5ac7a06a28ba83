// The Linux test program runs the Linux lumbractl.

#include <signal.h>
#include <unistd.h>

#include "channels/posix/serial_lock.h"
#include "tests/tools/tool_fixture.h"

namespace lumbra::test {

ToolTarget& Tool() {
    const auto same = [](const std::string& path) { return path; };
    static ToolTarget target{
        .launcher = {LUMBRACTL_PATH},
        // Without the switch COM3 would be /dev/ttyS2, which may well be there.
        .missingCom3 = {"-COM3", "/nada/tty"},
        .missingCom3Error = "Porta 3 (/nada/tty) n\xC3\xA3o existe",
        .stopSignal = SIGTERM,
#ifdef __SANITIZE_ADDRESS__
        // The sanitizer's allocator keeps freed blocks aside: its peak counts copies long gone.
        .measuresMemory = false,
#else
        .measuresMemory = true,
#endif
        .fileName = same,
        .com1AsFile = same,
        .attachPorts =
            [](const std::string& com1, const std::string& com2) {
                return Strings{"-COM1", com1, "-COM2", com2};
            },
        // The port's lock goes with it.
        .expectReleased =
            [](const std::string& com1) {
                EXPECT_NE(::access(SerialLockPath(com1).c_str(), F_OK), 0);
            },
    };
    return target;
}

}  // namespace lumbra::test
