#include "platform/program.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

#include "tests/support/temp_dir.h"

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

// Where /proc is missing, the program is found from the name it was started by: through PATH as the
// shell finds it, and through links to the real file, whose folder holds Lumbra.par.
TEST(ProgramTest, ProgramFileFromNameFollowsPathAndLinksToTheRealFile) {
    namespace fs = std::filesystem;
    const test::TempDir dir;
    for (const char* folder : {"lib", "noexec", "folder/lumbractl", "bin"})
        fs::create_directories(dir.file(folder));
    dir.write("lib/lumbractl", "#!/bin/sh\n");
    fs::permissions(dir.file("lib/lumbractl"), fs::perms::owner_all);
    dir.write("noexec/lumbractl", "");
    fs::create_symlink("../lib/lumbractl", dir.file("bin/lumbractl"));
    const std::string real = std::filesystem::canonical(dir.file("lib/lumbractl"));
    const struct {
        std::string name;
        std::string searchPath;
        std::string file;
    } cases[] = {
        {dir.file("bin/lumbractl"), "", real},
        {"lumbractl", "/nonexistent:" + dir.file("bin"), real},
        {"lumbractl", dir.file("noexec") + ":" + dir.file("folder") + ":" + dir.file("bin"), real},
        {"lumbractl", "/nonexistent:" + dir.file("noexec"), ""},
        {dir.file("noexec/lumbractl"), "", ""},
        {"lumbractl", "", ""},
        {"", dir.file("bin"), ""},
    };
    for (const auto& c : cases)
        EXPECT_EQ(ProgramFileFromName(c.name, c.searchPath), c.file)
            << c.name << " in " << c.searchPath;

    const test::ScopedCurrentDir inBin(dir.file("bin"));
    EXPECT_EQ(ProgramFileFromName("lumbractl", ":/nonexistent"), real);
    EXPECT_EQ(ProgramFileFromName("./lumbractl", ""), real);
}

}  // namespace
}  // namespace lumbra::platform
