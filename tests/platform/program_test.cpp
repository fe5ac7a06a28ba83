#include "platform/program.h"

#include <gtest/gtest.h>
#include <poll.h>

#include <csignal>
#include <filesystem>
#include <stdexcept>

#include "platform/file_handles.h"
#include "platform/msg_box.h"
#include "platform/stop_signals.h"
#include "tests/support/recording_msg_sink.h"
#include "tests/support/temp_dir.h"

namespace lumbra::platform {
namespace {

TEST(ProgramTest, CommandLineIsTheWordsAfterTheProgramNameJoinedByOneBlank) {
    const std::pair<std::vector<const char*>, std::string> cases[] = {
        {{"lumbra", "-FP", "x.par"}, "-FP x.par"},
        {{"lumbra", "-FP", "/tmp/Liga\xC3\xA7\xC3\xA3o.par"}, "-FP /tmp/Liga\xE7\xE3o.par"},
        {{}, ""}};
    for (const auto& [argv, line] : cases) {
        SetProgramArgs(static_cast<int>(argv.size()), argv.data());
        EXPECT_EQ(CommandLine(), line);
    }
}

TEST(ProgramTest, ProgramFolderIsTheRunningProgramsFolderUnlessOverridden) {
    const std::string real = std::filesystem::read_symlink("/proc/self/exe").parent_path();
    EXPECT_EQ(ProgramFolder(), real);
    OverrideProgramFolder("/srv/lumbra");
    EXPECT_EQ(ProgramFolder(), "/srv/lumbra");
    OverrideProgramFolder("");
    EXPECT_EQ(ProgramFolder(), real);
}

// A name with a "/" is that file; an empty entry of the search path is the current folder.
TEST(ProgramTest, ProgramFileFromNameFindsTheExecutableAlongTheSearchPath) {
    test::TempDir tmp;
    tmp.write("run", "");
    tmp.write("plain", "");
    std::filesystem::permissions(tmp.file("run"), std::filesystem::perms::owner_all);
    std::filesystem::create_directory(tmp.file("dir"));
    const test::ScopedCurrentDir cwd(tmp.path());
    const std::string run = std::filesystem::canonical(tmp.file("run")).string();
    const std::string elsewhere = "/nonexistent:" + tmp.path();
    const struct {
        const char* name;
        std::string path, want;
    } cases[] = {{"run", elsewhere, run},  {"run", "/nonexistent:", run}, {"./run", "", run},
                 {"plain", elsewhere, ""}, {"./plain", elsewhere, ""},    {"dir", elsewhere, ""},
                 {"", elsewhere, ""}};
    for (const auto& c : cases)
        EXPECT_EQ(ProgramFileFromName(c.name, c.path), c.want) << c.name << " in " << c.path;
}

TEST(MsgBoxTest, EndProgramClosesFilesThenRunsEachHookOnceNewestFirst) {
    test::TempDir tmp;
    test::RecordingMsgSink sink;
    ASSERT_EQ(FileOpen(4, tmp.file("a"), FileMode::Output), 0);
    std::vector<std::string> ran;
    AtProgramEnd([&] { ran.push_back(FileIsOpen(4) ? "first, file open" : "first"); });
    AtProgramEnd([] { throw std::runtime_error("a failing clean-up stops no other"); });
    AtProgramEnd([&] { ran.push_back("last"); });
    EXPECT_THROW(EndProgram(3), ProgramEnded);
    EXPECT_THROW(EndProgram(), ProgramEnded);
    EXPECT_EQ(ran, (std::vector<std::string>{"last", "first"}));
    EXPECT_EQ(sink.endings(), (std::vector<int>{3, 0}));
}

TEST(MsgBoxDeathTest, DefaultSinkWritesToStandardErrorAndExits) {
    SetMsgSink(nullptr);
    EXPECT_EXIT(
        {
            MsgBox("Erro a abrir ficheiro", "Erro : 53   File not found");
            EndProgram(7);
        },
        ::testing::ExitedWithCode(7), "Erro a abrir ficheiro: Erro : 53   File not found");
}

volatile std::sig_atomic_t ownHandlerRan = 0;

// While a catcher lives, each stop signal is only recorded (the first one counts) and wakes its
// descriptor; afterwards the handlers from before it are back.
TEST(StopSignalsTest, ACatcherRecordsTheFirstStopSignalAndGivesTheHandlersBack) {
    for (const int signo : {SIGINT, SIGTERM, SIGHUP}) {
        SCOPED_TRACE(signo);
        ownHandlerRan = 0;
        std::signal(signo, [](int) { ownHandlerRan = 1; });
        {
            const StopSignalCatcher catcher;
            EXPECT_FALSE(StopRequested());
            ASSERT_EQ(std::raise(signo), 0);
            std::raise(signo == SIGINT ? SIGTERM : SIGINT);
            EXPECT_EQ(StopSignal(), signo);
            pollfd p{StopSignalDescriptor(), POLLIN, 0};
            EXPECT_EQ(::poll(&p, 1, 0), 1);
            EXPECT_EQ(ownHandlerRan, 0);
        }
        EXPECT_EQ(StopSignalDescriptor(), -1);
        std::raise(signo);
        EXPECT_EQ(ownHandlerRan, 1);
        std::signal(signo, SIG_DFL);
    }
}

}  // namespace
}  // namespace lumbra::platform
