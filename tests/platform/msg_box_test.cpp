#include "platform/msg_box.h"

#include <gtest/gtest.h>

#include <stdexcept>

#include "platform/file_handles.h"
#include "tests/support/recording_msg_sink.h"
#include "tests/support/temp_dir.h"

namespace lumbra::platform {
namespace {

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

}  // namespace
}  // namespace lumbra::platform
