#include "platform/program.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

namespace lumbra::platform {
namespace {

TEST(ProgramTest, CommandLineIsTheWordsAfterTheProgramNameJoinedByOneBlank) {
    const struct {
        std::vector<const char*> argv;
        std::string line;
    } cases[] = {
        {{"/opt/lumbra/lumbra"}, ""},
        {{"lumbra", "-FP", "x.par"}, "-FP x.par"},
        {{"lumbra", "-FP", "/tmp/Liga\xC3\xA7\xC3\xA3o.par"}, "-FP /tmp/Liga\xE7\xE3o.par"},
        {{}, ""},
    };
    for (const auto& c : cases) {
        SetProgramArgs(static_cast<int>(c.argv.size()), c.argv.data());
        EXPECT_EQ(CommandLine(), c.line);
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

}  // namespace
}  // namespace lumbra::platform
