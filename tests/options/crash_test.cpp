// A parameter file being written back survives the program being killed at any moment: a child
// rewrites a large file over and over, is frozen at random points to look at the file as a crash
// would leave it, then killed. Every look finds the old content or the new one, whole.

#include <gtest/gtest.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <random>
#include <string>

#include "tests/options/tda_opc.h"

namespace lumbra::test {
namespace {

// The file with its state variable holding estado; every other record is the same in both.
std::string Content(const std::string& estado) {
    std::string bytes = Lines({"'1", "'2", "'3", "'4", "'5", "#DADOS"});
    for (int i = 1; i <= 2000; ++i)
        bytes += "Registo [R" + std::to_string(i) + "]=valor com algum texto " +
                 std::to_string(i * 7919) + "\r\n";
    return bytes + Lines({"Estado [ESTADO]=" + estado, "##"});
}

// The child: flips the state between "A" and "BB" and writes the file back, forever. It tells the
// parent through ready when it starts.
[[noreturn]] void RewriteForever(const std::string& fic, int ready) {
    TdaOpc opc;
    const char byte = 1;
    if (::write(ready, &byte, 1) != 1) ::_exit(3);
    for (;;) {
        opc.RegPrp(fic);
        Variant estado = std::string();
        opc.RegCon("ESTADO", estado);
        opc.RegVarAlt("ESTADO", estado.text() == "A" ? "BB" : "A");
        opc.RegExe("", 0);
    }
}

TEST(WholeFileReplacement, AKilledWriterLeavesTheOldFileOrTheNewOneWhole) {
    TempDir dir;
    const std::string fic = dir.file("grande.par");
    const std::string oldContent = Content("A"), newContent = Content("BB");
    dir.write("grande.par", oldContent);

    // The looks are spread over one write-back on this machine, in this build, so that they land
    // all over the child's work however fast it runs.
    const auto start = std::chrono::steady_clock::now();
    {
        TdaOpc opc;
        opc.RegPrp(fic);
        opc.RegExe("", 0);
    }
    const long cycle = static_cast<long>(std::chrono::duration_cast<std::chrono::microseconds>(
                                             std::chrono::steady_clock::now() - start)
                                             .count());
    const unsigned seed = std::random_device{}();
    SCOPED_TRACE("seed " + std::to_string(seed));
    std::mt19937 random(seed);
    std::uniform_int_distribution<long> delay(0, std::max(cycle, 1000L));

    int seen[2] = {0, 0};
    for (int round = 0; round < 50; ++round) {
        int fds[2];
        ASSERT_EQ(::pipe(fds), 0);
        const pid_t child = ::fork();
        ASSERT_GE(child, 0);
        if (child == 0) {
            ::close(fds[0]);
            RewriteForever(fic, fds[1]);
        }
        ::close(fds[1]);
        char byte = 0;
        const ssize_t got = ::read(fds[0], &byte, 1);
        ::close(fds[0]);

        // What the file looks like at this moment; false when it is neither old nor new.
        const auto look = [&] {
            const std::string now = dir.read("grande.par");
            EXPECT_TRUE(now == oldContent || now == newContent)
                << "round " << round << ": the file holds " << now.size() << " bytes";
            ++seen[now == oldContent ? 0 : 1];
            return now == oldContent || now == newContent;
        };
        bool whole = got == 1;
        int status = 0;
        for (int i = 0; i < 3 && whole; ++i) {
            ::usleep(static_cast<useconds_t>(delay(random)));
            ::kill(child, SIGSTOP);
            ::waitpid(child, &status, WUNTRACED);
            whole = look();
            ::kill(child, SIGCONT);
        }
        ::usleep(static_cast<useconds_t>(delay(random)));
        ::kill(child, SIGKILL);
        ASSERT_EQ(::waitpid(child, &status, 0), child);
        ASSERT_EQ(got, 1) << "the child did not start (status " << status << ")";
        ASSERT_TRUE(whole && WIFSIGNALED(status)) << "status " << status;
        ASSERT_TRUE(look());
        ASSERT_LE(FilesIn(dir), 2u) << "at most the one replacement file of an interrupted write";
    }
    // Both states turning up shows the looks landed at different points of the child's work.
    EXPECT_GT(seen[0], 0);
    EXPECT_GT(seen[1], 0);
    TdaOpc opc;
    opc.RegPrp(fic);
    opc.RegExe("", 0);
    EXPECT_EQ(FilesIn(dir), 1u) << "a complete write leaves nothing beside the file";
}

}  // namespace
}  // namespace lumbra::test
