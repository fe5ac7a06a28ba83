// lumbractl.exe, the Windows program of the windows preset, run by Wine in the prefix of the
// Windows tests. Its COM1 and COM2 are pointed at the test's pseudo-terminals in the prefix's
// registry (which restarts the prefix's server, so only when they change); every other COM port
// points at nothing, and so do COM1 and COM2 again when the program ends.

#include <signal.h>
#include <sys/wait.h>

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

// Debian keeps the 64-bit Wine out of PATH unless a wrapper puts it there.
std::string WineProgram() {
    return std::system("command -v wine64 >/dev/null") == 0 ? "wine64" : "/usr/lib/wine/wine64";
}

// Runs a script of tests/support/wine quietly; its exit status.
int RunWineScript(const std::string& script, const Strings& args) {
    std::string command =
        "/bin/bash '" + std::string(LUMBRA_SOURCE_DIR) + "/tests/support/wine/" + script + "'";
    for (const std::string& a : args)
        command += " '" + a + "'";
    const int status = std::system((command + " </dev/null >/dev/null 2>&1").c_str());
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

class WineTarget : public ToolTarget {
  public:
    WineTarget()
        : wine_(WineProgram()),
          exe_(Setting("LUMBRACTL_EXE", LUMBRACTL_EXE)),
          prefix_(Setting("LUMBRA_WINE_PREFIX", LUMBRA_WINE_PREFIX)) {
        ::setenv("WINEPREFIX", prefix_.c_str(), 1);
        ::setenv("WINEDEBUG", "-all", 1);
    }

    const std::string& exe() const { return exe_; }
    const std::string& prefix() const { return prefix_; }
    void detachPorts() {
        if (!attached_.empty()) {
            EXPECT_EQ(RunWineScript("wine_ports.sh", {prefix_}), 0);
        }
        attached_.clear();
    }

    Strings commandLine(const Strings& args) const override {
        Strings words = {wine_, exe_};
        words.insert(words.end(), args.begin(), args.end());
        return words;
    }
    // Wine shows the root of this machine as drive Z.
    std::string fileName(const std::string& hostPath) const override {
        std::string name = "Z:" + fs::weakly_canonical(fs::path(hostPath)).string();
        for (char& c : name) {
            if (c == '/') c = '\\';
        }
        return name;
    }
    Strings attachPorts(const std::string& com1, const std::string& com2) override {
        const Strings pairs = {"COM1=" + com1, "COM2=" + com2};
        if (pairs != attached_) {
            Strings args = {prefix_};
            args.insert(args.end(), pairs.begin(), pairs.end());
            EXPECT_EQ(RunWineScript("wine_ports.sh", args), 0) << "cannot map the ports";
            attached_ = pairs;
        }
        return {};
    }
    Strings missingCom3() const override { return {}; }
    std::string missingCom3Error() const override {
        return "Porta 3 (COM3) n\xC3\xA3o pode ser aberta: Dispositivo indispon\xC3\xADvel";
    }
    std::string com1AsFile(const std::string&) const override { return "COM1"; }
    // Wine hands SIGINT to the program as the console's Ctrl+C; SIGTERM would end it unasked.
    int stopSignal() const override { return SIGINT; }
    // The handles went with the process.
    void expectReleased(const std::string&) const override {}
    // The peak is Wine's loader and libraries as much as the program.
    bool measuresMemory() const override { return false; }

  private:
    std::string wine_;
    std::string exe_;
    std::string prefix_;
    Strings attached_;
};

WineTarget& Wine() {
    static WineTarget target;
    return target;
}

// Before any test: the program must have been built; after the last: no port points at a
// pseudo-terminal that is gone.
class WineEnvironment : public ::testing::Environment {
  public:
    void SetUp() override {
        ASSERT_TRUE(fs::exists(Wine().exe()))
            << Wine().exe() << " is missing: build the windows preset first";
        ASSERT_EQ(RunWineScript("wine_prefix.sh", {Wine().prefix()}), 0)
            << "no Wine prefix at " << Wine().prefix();
    }
    void TearDown() override { Wine().detachPorts(); }
};

[[maybe_unused]] ::testing::Environment* const environment =
    ::testing::AddGlobalTestEnvironment(new WineEnvironment);

}  // namespace

ToolTarget& Tool() {
    return Wine();
}

}  // namespace lumbra::test
