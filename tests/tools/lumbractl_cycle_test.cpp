// "lumbractl ciclo": the window's 338 sends, and Ctrl+C stopping them between two sends.

#include <signal.h>

#include <algorithm>
#include <chrono>
#include <string>
#include <thread>

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

TEST_F(LumbractlCycle, CycleWithoutPlaceholdersSendsTheSameCommand338Times) {
    PtyDrain drain(com1.master());
    const ToolRun run = RunTool(Args({"ciclo", "--modo", "2"}));
    const std::string got = drain.finish(5 * kSends);
    EXPECT_EQ(run.status, 0) << run.err;
    std::string expected;
    for (int i = 0; i < kSends; ++i)
        expected += "\x1Bp\x01\x19\xFA";
    EXPECT_EQ(got, expected);
}

TEST_F(LumbractlCycle, CtrlCStopsTheCycleAfterTheSendUnderWayAndEndsWith130) {
    PtyDrain drain(com1.master());
    // A small pipe that the test does not read yet: after a couple of hundred --bytes lines the
    // tool waits on it, so the cycle cannot end before the interrupt arrives.
    ToolProcess tool(Args({"ciclo", "--modo", "Ciclo", "--bytes"}), 4096);
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(60);
    while (drain.bytes().size() < 5 && std::chrono::steady_clock::now() < deadline)
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    ASSERT_GE(drain.bytes().size(), 5u) << "the cycle did not start";
    ::kill(tool.pid(), SIGINT);
    const ToolRun run = tool.finish();
    const std::string got = drain.finish();

    EXPECT_EQ(run.status, 130) << run.err;
    const std::size_t sends = got.size() / 5;
    EXPECT_EQ(got.size() % 5, 0u) << "a send was cut short";
    EXPECT_GE(sends, 1u);
    EXPECT_LT(sends, static_cast<std::size_t>(kSends));
    for (std::size_t i = 0; i < sends; ++i)
        ASSERT_EQ(got.substr(5 * i, 5), CycleSend(static_cast<int>(i))) << "send " << i;
    EXPECT_EQ(static_cast<std::size_t>(std::count(run.out.begin(), run.out.end(), '\n')), sends);
    EXPECT_EQ(run.err, "lumbractl: ciclo interrompido depois de " + std::to_string(sends) +
                           " de 338 envios\n");
}

}  // namespace
}  // namespace lumbra::test
