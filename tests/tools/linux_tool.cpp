// The Linux test program runs the Linux lumbractl.

#include <signal.h>
#include <unistd.h>

#include "channels/posix/serial_lock.h"
#include "tests/tools/tool_fixture.h"

namespace lumbra::test {
namespace {

class LinuxTarget : public ToolTarget {
  public:
    Strings commandLine(const Strings& args) const override {
        Strings words = {LUMBRACTL_PATH};
        words.insert(words.end(), args.begin(), args.end());
        return words;
    }
    std::string fileName(const std::string& hostPath) const override { return hostPath; }
    Strings attachPorts(const std::string& com1, const std::string& com2) override {
        return {"-COM1", com1, "-COM2", com2};
    }
    // Without the switch COM3 would be /dev/ttyS2, which may well be there.
    Strings missingCom3() const override { return {"-COM3", "/nada/tty"}; }
    std::string missingCom3Error() const override {
        return "Porta 3 (/nada/tty) n\xC3\xA3o existe";
    }
    std::string com1AsFile(const std::string& com1) const override { return com1; }
    int stopSignal() const override { return SIGTERM; }
    // The port's lock goes with it.
    void expectReleased(const std::string& com1) const override {
        EXPECT_NE(::access(SerialLockPath(com1).c_str(), F_OK), 0);
    }
    bool measuresMemory() const override { return true; }
};

}  // namespace

ToolTarget& Tool() {
    static LinuxTarget target;
    return target;
}

}  // namespace lumbra::test
