#pragma once
// What the file handles do alike on every system: one fixture and the tables both test programs
// run.

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <utility>
#include <vector>

#include "platform/file_handles.h"
#include "platform/file_system.h"
#include "tests/support/temp_dir.h"

namespace lumbra::platform {

class FileHandlesTest : public ::testing::Test {
  protected:
    void TearDown() override { FileCloseAll(); }
    // The lines of file 1 up to the error that ends them, then that error.
    static std::vector<std::string> Lines(std::int16_t& end) {
        std::vector<std::string> lines;
        std::string line;
        while ((end = FileReadLine(1, line)) == 0)
            lines.push_back(line);
        return lines;
    }
    // A line, an empty line and a text without its end, to file 1: kSample when all went (0).
    static int WriteSample() {
        return FileWrite(1, "new", true) + FileWrite(1, "", true) + FileWrite(1, "x\xE7", false);
    }
    inline static const std::string kSample = "new\r\n\r\nx\xE7";
    test::TempDir tmp;
};

// Lines end at CR LF, CR or LF and are read whole however long, across read chunks too; then every
// read reports the end.
TEST_F(FileHandlesTest, ReadLineEndsLinesAtCrLfCrAndLfThenReportsTheEnd) {
    const std::string chunk(64 * 1024 - 1, 'a');  // its CR ends the first chunk read
    const std::string longer(kMaxLineLength + 1, 'c');
    const std::string longest(200000, 'c');
    const std::pair<std::string, std::vector<std::string>> cases[] = {
        {"a\r\nb\r\n", {"a", "b"}},
        {"a\rb\r", {"a", "b"}},
        {"a\n\rb", {"a", "", "b"}},
        {"", {}},
        {std::string("\xE7\0\xFF\r\n", 5), {std::string("\xE7\0\xFF", 3)}},
        {chunk + "\r\nb", {chunk, "b"}},
        {longer + "\r\nb", {longer, "b"}},
        {longest + "\n\rd", {longest, "", "d"}}};
    for (const auto& [bytes, want] : cases) {
        tmp.write("f.txt", bytes);
        ASSERT_EQ(FileOpen(1, tmp.file("f.txt"), FileMode::Input), 0);
        std::int16_t end = 0;
        EXPECT_TRUE(Lines(end) == want) << bytes.substr(0, 20);
        EXPECT_EQ(end, kErrInputPastEnd);
        std::string line;
        EXPECT_EQ(FileReadLine(1, line), kErrInputPastEnd);
        FileClose(1);
    }
}

// What is missing, malformed or not a file gives the host's numbers and leaves no file behind: a
// device that is not there is "Device unavailable", and no device is opened for reading.
TEST_F(FileHandlesTest, OpenFailuresGiveTheHostNumbersAndLeaveNoFile) {
    const test::ScopedCurrentDir cwd(tmp.path());
    ASSERT_EQ(DirCreate("dir"), 0);
    const struct {
        std::string path;
        FileMode mode;
        std::int16_t err;
    } cases[] = {
        {"missing.txt", FileMode::Input, kErrFileNotFound},
        {tmp.file("nofolder/a.txt"), FileMode::Input, kErrPathNotFound},
        {"nofolder/a.txt", FileMode::Output, kErrPathNotFound},
        {"dir", FileMode::Input, kErrPathFileAccess},
        {"dir", FileMode::Output, kErrPathFileAccess},
        {"", FileMode::Input, kErrBadFileNameOrNumber},
#ifdef _WIN32
        {"a?b", FileMode::Output, kErrBadFileNameOrNumber},
        {"COM7", FileMode::Output, kErrDeviceUnavailable},
        {"com8:", FileMode::Append, kErrDeviceUnavailable},
        {"//./COM3", FileMode::Binary, kErrDeviceUnavailable},
        {"\\\\.\\pipe\\lumbra-nobody", FileMode::Output, kErrDeviceUnavailable},
        {"\\\\lumbra-no-pc\\EPSON", FileMode::Output, kErrDeviceUnavailable},
        {"COM7", FileMode::Input, kErrPathFileAccess},
        {"nul", FileMode::Input, kErrPathFileAccess},
#else
        {"/dev/zero", FileMode::Input, kErrPathFileAccess},  // endless: no text file
#endif
    };
    for (const auto& c : cases) {
        EXPECT_EQ(FileOpen(1, c.path, c.mode), c.err) << c.path;
        EXPECT_FALSE(FileIsOpen(1));
    }
#ifdef _WIN32
    ASSERT_EQ(FileOpen(1, "NUL", FileMode::Output), 0);
    EXPECT_EQ(FileWrite(1, "x", true) + FileClose(1), 0);
#endif
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(tmp.path()))
        names.push_back(entry.path().filename().string());
    EXPECT_EQ(names, std::vector<std::string>{"dir"});
}

// Delete removes plain files only, never a folder or an open file; DirCreate makes one folder, "\"
// separating folders as "/" does.
TEST_F(FileHandlesTest, DeleteAndDirCreateGiveTheHostNumbers) {
    tmp.write("plain", "x");
    tmp.write("open", "x");
    ASSERT_EQ(DirCreate(tmp.file("dir")), 0);
    ASSERT_EQ(FileOpen(1, tmp.file("open"), FileMode::Input), 0);
    const std::pair<std::string, std::int16_t> deletes[] = {{"plain", 0},
                                                            {"missing", kErrFileNotFound},
                                                            {"nofolder/a", kErrPathNotFound},
                                                            {"dir", kErrPathFileAccess},
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

}  // namespace lumbra::platform
