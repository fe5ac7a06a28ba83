#include "platform/file_system.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <string>

#include "platform/file_handles.h"
#include "tests/support/temp_dir.h"

namespace lumbra::platform {
namespace {

TEST(FileSystemTest, DeleteRemovesPlainFilesOnlyAndNeverADeviceOrAnOpenFile) {
    test::TempDir tmp;
    tmp.write("plain", "x");
    tmp.write("open", "x");
    ASSERT_EQ(::mkdir(tmp.file("dir").c_str(), 0755), 0);
    ASSERT_EQ(::mkfifo(tmp.file("fifo").c_str(), 0644), 0);
    ASSERT_EQ(FileOpen(1, tmp.file("open"), FileMode::Input), 0);
    const struct {
        std::string name;
        std::int16_t err;
        bool remains;
    } cases[] = {
        {"plain", 0, false},
        {"missing", kErrFileNotFound, false},
        {"nofolder/a", kErrPathNotFound, false},
        {"dir", kErrPathFileAccess, true},
        {"fifo", kErrPathFileAccess, true},
        {"open", kErrPathFileAccess, true},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(FileDelete(tmp.file(c.name)), c.err) << c.name;
        EXPECT_EQ(tmp.exists(c.name), c.remains) << c.name;
    }
    EXPECT_EQ(FileDelete(""), kErrBadFileNameOrNumber);
    FileCloseAll();
}

TEST(FileSystemTest, DirCreateMakesOneFolder) {
    test::TempDir tmp;
    tmp.write("plain", "x");
    const std::pair<std::string, std::int16_t> cases[] = {
        {"new", 0},
        {"new", kErrPathFileAccess},  // exists now
        {"plain", kErrPathFileAccess},
        {"no/deeper", kErrPathNotFound},
        {"plain/sub", kErrPathNotFound},
        {"new\\sub", 0},  // "\" separates folders here too
    };
    for (const auto& [name, err] : cases)
        EXPECT_EQ(DirCreate(tmp.file(name)), err) << name;
    EXPECT_TRUE(tmp.exists("new/sub"));
    EXPECT_EQ(DirCreate(""), kErrBadFileNameOrNumber);
}

}  // namespace
}  // namespace lumbra::platform
