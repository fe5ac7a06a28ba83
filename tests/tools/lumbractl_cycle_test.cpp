// "lumbractl ciclo": the window's 338 sends, and the stop signals ending them between two sends.

#include <signal.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstring>
#include <filesystem>
#include <string>
#include <thread>

#include "channels/serial_lock.h"
#include "tests/tools/tool_fixture.h"
#include "tests/tools/tool_process.h"

namespace lumbra::test {
namespace {

constexpr int kSends = 338;

class LumbractlCycle : public LumbractlFixture {};

TEST_F(LumbractlCycle, CycleSendsAll338CommandsInTheWindowsOrder) {
    PtyDrain drain(com1.master());
    const ToolRun run = RunTool(Args({"ciclo", "--modo", "Ciclo", "--bytes"}));
    const std::string got = drain.finish(5 * kSends);

    EXPECT_EQ(run.status, 0) << run.err;
    // Standard error is no terminal here: no progress on it.
    EXPECT_EQ(run.err, "");
    ASSERT_EQ(got.size(), 5u * kSends);
    for (int i = 0; i < kSends; ++i)
        ASSERT_EQ(got.substr(5 * static_cast<std::size_t>(i), 5), CycleSend(i)) << "send " << i;
    EXPECT_EQ(std::count(run.out.begin(), run.out.end(), '\n'), kSends);
    EXPECT_EQ(run.out.substr(0, 21), "COM1: 1B 70 00 0A 0A\n");
}

// Ctrl+C, SIGTERM and SIGHUP: the send under way completes, the port closes (its lock goes with
// it) and the tool ends with 128 + the signal.
class LumbractlStopSignal : public LumbractlFixture, public ::testing::WithParamInterface<int> {};

TEST_P(LumbractlStopSignal, StopsTheCycleAfterTheSendUnderWayAndClosesThePort) {
    PtyDrain drain(com1.master());
    // A small pipe that the test does not read yet: after a couple of hundred --bytes lines the
    // tool waits on it, so the cycle cannot end before the signal arrives.
    ToolProcess tool(Args({"ciclo", "--modo", "Ciclo", "--bytes"}), 4096);
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(60);
    while (drain.bytes().size() < 5 && std::chrono::steady_clock::now() < deadline)
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    ASSERT_GE(drain.bytes().size(), 5u) << "the cycle did not start";
    ::kill(tool.pid(), GetParam());
    const ToolRun run = tool.finish();
    const std::string got = drain.finish();

    EXPECT_EQ(run.status, 128 + GetParam()) << run.err;
    const std::size_t sends = got.size() / 5;
    EXPECT_EQ(got.size() % 5, 0u) << "a send was cut short";
    EXPECT_GE(sends, 1u);
    EXPECT_LT(sends, static_cast<std::size_t>(kSends));
    for (std::size_t i = 0; i < sends; ++i)
        ASSERT_EQ(got.substr(5 * i, 5), CycleSend(static_cast<int>(i))) << "send " << i;
    EXPECT_EQ(static_cast<std::size_t>(std::count(run.out.begin(), run.out.end(), '\n')), sends);
    EXPECT_EQ(run.err, "lumbractl: ciclo interrompido depois de " + std::to_string(sends) +
                           " de 338 envios\n");
    const std::string lock = SerialLockPath(com1.slavePath());
    ASSERT_NE(lock, "");
    EXPECT_NE(::access(lock.c_str(), F_OK), 0) << lock << " was left behind";
}

INSTANTIATE_TEST_SUITE_P(Signals, LumbractlStopSignal, ::testing::Values(SIGINT, SIGTERM, SIGHUP),
                         [](const auto& signal) {
                             return std::string(::sigabbrev_np(signal.param));
                         });

// A file port on a terminal whose far side reads nothing: the send waits for it, and Ctrl+C ends
// that wait, and the tool, at once.
TEST_F(LumbractlCycle, CtrlCEndsASendThatWaitsForItsDeviceWithinASecond) {
    dir.write("Bloqueio.par",
              ParHeader() + "#LIG Portas\r\nTerminal [FIC]=" + com1.slavePath() + "\r\n##\r\n");
    com1.fillUntilBlocked();
    ToolProcess tool({"-FP", dir.file("Bloqueio.par"), "teste"});
    // The tool opens the terminal right before it writes: once it holds it, it is waiting.
    const auto holds = [&] {
        std::error_code ec;
        for (const auto& fd : std::filesystem::directory_iterator(
                 "/proc/" + std::to_string(tool.pid()) + "/fd", ec)) {
            if (std::filesystem::read_symlink(fd.path(), ec) == com1.slavePath()) return true;
        }
        return false;
    };
    const auto limit = std::chrono::steady_clock::now() + std::chrono::seconds(4);
    while (!holds() && std::chrono::steady_clock::now() < limit)
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    ASSERT_TRUE(holds()) << "the tool never opened " << com1.slavePath();
    const auto start = std::chrono::steady_clock::now();
    ::kill(tool.pid(), SIGINT);
    const ToolRun run = tool.finish();
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(1));
    EXPECT_EQ(run.status, 130);
    EXPECT_NE(run.err.find("Funcao: Gravar TX|Erro:User interrupt occurred"), std::string::npos)
        << run.err;
}

}  // namespace
}  // namespace lumbra::test
