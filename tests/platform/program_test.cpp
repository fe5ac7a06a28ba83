#include "platform/program.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <tuple>

#include "tests/support/temp_dir.h"

namespace lumbra::platform {
namespace {

TEST(ProgramTest, CommandLineIsTheWordsAfterTheProgramNameJoinedByOneBlank) {
    const std::pair<std::vector<const char*>, std::string> cases[] = {
        {{"/opt/lumbra/lumbra"}, ""},
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
    const std::tuple<std::string, std::string, std::string> cases[] = {
        {dir.file("bin/lumbractl"), "", real},
        {"lumbractl", "/nonexistent:" + dir.file("bin"), real},
        {"lumbractl", dir.file("noexec") + ":" + dir.file("folder") + ":" + dir.file("bin"), real},
        {"lumbractl", "/nonexistent:" + dir.file("noexec"), ""},
        {dir.file("noexec/lumbractl"), "", ""},
        {"lumbractl", "", ""},
        {"", dir.file("bin"), ""}};
    for (const auto& [name, searchPath, file] : cases)
        EXPECT_EQ(ProgramFileFromName(name, searchPath), file) << name << " in " << searchPath;

    const test::ScopedCurrentDir inBin(dir.file("bin"));
    EXPECT_EQ(ProgramFileFromName("lumbractl", ":/nonexistent"), real);
    EXPECT_EQ(ProgramFileFromName("./lumbractl", ""), real);
}

}  // namespace
}  // namespace lumbra::platform
