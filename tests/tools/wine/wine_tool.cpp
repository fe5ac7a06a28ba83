// lumbractl.exe, the Windows program of the windows preset, run by Wine in the prefix of the
// Windows tests. Its COM1 and COM2 are pointed at the test's pseudo-terminals in the prefix's
// registry (which restarts the prefix's server, so only when they change); every other COM port
// points at nothing, and so do COM1 and COM2 again when the program ends.

#include <signal.h>
#include <sys/wait.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>

#include "tests/tools/tool_fixture.h"

namespace lumbra::test {
namespace {

namespace fs = std::filesystem;

std::string Setting(const char* name, const char* fallback) {
    const char* value = std::getenv(name);
    return value != nullptr && *value != '\0' ? value : fallback;
}

const std::string kExe = Setting("LUMBRACTL_EXE", LUMBRACTL_EXE);
const std::string kPrefix = Setting("LUMBRA_WINE_PREFIX", LUMBRA_WINE_PREFIX);
Strings attached;  // the ports pointed at pseudo-terminals now

// Runs a script of tests/support/wine quietly on the prefix; its exit status.
int RunWineScript(const std::string& script, const Strings& args = {}) {
    std::string command = "/bin/bash '" + std::string(LUMBRA_SOURCE_DIR) + "/tests/support/wine/" +
                          script + "' '" + kPrefix + "'";
    for (const std::string& a : args)
        command += " '" + a + "'";
    const int status = std::system((command + " </dev/null >/dev/null 2>&1").c_str());
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

// Before any test: the program must have been built; after the last: no port points at a
// pseudo-terminal that is gone.
class WineEnvironment : public ::testing::Environment {
  public:
    void SetUp() override {
        ::setenv("WINEPREFIX", kPrefix.c_str(), 1);
        ::setenv("WINEDEBUG", "-all", 1);
        ASSERT_TRUE(fs::exists(kExe)) << kExe << " is missing: build the windows preset first";
        ASSERT_EQ(RunWineScript("wine_prefix.sh"), 0) << "no Wine prefix at " << kPrefix;
    }
    void TearDown() override {
        if (!attached.empty()) {
            EXPECT_EQ(RunWineScript("wine_ports.sh"), 0);
        }
    }
};

[[maybe_unused]] ::testing::Environment* const environment =
    ::testing::AddGlobalTestEnvironment(new WineEnvironment);

}  // namespace

ToolTarget& Tool() {
    static ToolTarget target{
        // Debian keeps the 64-bit Wine out of PATH unless a wrapper puts it there.
        .launcher = {std::system("command -v wine64 >/dev/null") == 0 ? "wine64"
                                                                      : "/usr/lib/wine/wine64",
                     kExe},
        .missingCom3 = {},
        .missingCom3Error =
            "Porta 3 (COM3) n\xC3\xA3o pode ser aberta: Dispositivo indispon\xC3\xADvel",
        // Wine hands SIGINT to the program as the console's Ctrl+C; SIGTERM would end it unasked.
        .stopSignal = SIGINT,
        // The peak is Wine's loader and libraries as much as the program.
        .measuresMemory = false,
        // Wine shows the root of this machine as drive Z.
        .fileName =
            [](const std::string& hostPath) {
                std::string name = "Z:" + fs::weakly_canonical(fs::path(hostPath)).string();
                std::replace(name.begin(), name.end(), '/', '\\');
                return name;
            },
        .com1AsFile = [](const std::string&) { return std::string("COM1"); },
        .attachPorts =
            [](const std::string& com1, const std::string& com2) {
                const Strings pairs = {"COM1=" + com1, "COM2=" + com2};
                if (pairs != attached) {
                    EXPECT_EQ(RunWineScript("wine_ports.sh", pairs), 0) << "cannot map the ports";
                    attached = pairs;
                }
                return Strings{};
            },
        .expectReleased = [](const std::string&) {},  // the handles went with the process
    };
    return target;
}

}  // namespace lumbra::test
