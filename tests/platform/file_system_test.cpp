#include "platform/file_system.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include "platform/file_handles.h"
#include "tests/support/temp_dir.h"

namespace lumbra::platform {
namespace {

// Delete removes plain files only, never a device, a folder or an open file; DirCreate makes one
// folder, "\" separating folders as "/" does.
TEST(FileSystemTest, DeleteAndDirCreateGiveTheHostNumbers) {
    test::TempDir tmp;
    tmp.write("plain", "x");
    tmp.write("open", "x");
    ASSERT_EQ(::mkdir(tmp.file("dir").c_str(), 0755), 0);
    ASSERT_EQ(::mkfifo(tmp.file("fifo").c_str(), 0644), 0);
    ASSERT_EQ(FileOpen(1, tmp.file("open"), FileMode::Input), 0);
    const std::pair<std::string, std::int16_t> deletes[] = {{"plain", 0},
                                                            {"missing", kErrFileNotFound},
                                                            {"nofolder/a", kErrPathNotFound},
                                                            {"dir", kErrPathFileAccess},
                                                            {"fifo", kErrPathFileAccess},
                                                            {"open", kErrPathFileAccess}};
    for (const auto& [name, err] : deletes) {
        EXPECT_EQ(FileDelete(tmp.file(name)), err) << name;
        EXPECT_EQ(tmp.exists(name), err == kErrPathFileAccess) << name;
    }
    FileCloseAll();
    const std::pair<std::string, std::int16_t> folders[] = {{"new", 0},
                                                            {"new", kErrPathFileAccess},
                                                            {"open", kErrPathFileAccess},
                                                            {"no/deeper", kErrPathNotFound},
                                                            {"open/sub", kErrPathNotFound},
                                                            {"new\\sub", 0}};
    for (const auto& [name, err] : folders)
        EXPECT_EQ(DirCreate(tmp.file(name)), err) << name;
    EXPECT_TRUE(tmp.exists("new/sub"));
    EXPECT_EQ(DirCreate("") + FileDelete(""), 2 * kErrBadFileNameOrNumber);
}

}  // namespace
}  // namespace lumbra::platform
