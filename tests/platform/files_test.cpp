#include "platform/file_handles.h"
#include "platform/file_system.h"
#include "platform/host_text.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include "tests/support/temp_dir.h"

namespace lumbra::platform {
namespace {

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
    test::TempDir tmp;
};

// Lines end at CR LF, CR or LF and are read whole however long, across read chunks too; then every
// read reports the end.
TEST_F(FileHandlesTest, ReadLineEndsLinesAtCrLfCrAndLfThenReportsTheEnd) {
    const std::string longLine(64 * 1024 - 1, 'a');  // its CR ends the first chunk read
    const std::string longer(kMaxLineLength + 1, 'c');
    const std::string longest(200000, 'c');
    const std::pair<std::string, std::vector<std::string>> cases[] = {
        {"a\r\nb\r\n", {"a", "b"}},
        {"a\rb\r", {"a", "b"}},
        {"a\n\rb", {"a", "", "b"}},
        {"", {}},
        {std::string("\xE7\0\xFF\r\n", 5), {std::string("\xE7\0\xFF", 3)}},
        {longLine + "\r\nb", {longLine, "b"}},
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
    // A read the system fails ends the lines with the device's error, at once.
    ASSERT_EQ(FileOpen(1, "/proc/self/mem", FileMode::Input), 0);
    std::int16_t end = 0;
    EXPECT_TRUE(Lines(end).empty());
    EXPECT_EQ(end, kErrDeviceIo);
}

TEST_F(FileHandlesTest, EachModeWritesByteExactAndTreatsOldContentAsTheHostDoes) {
    const std::pair<FileMode, std::string> cases[] = {
        {FileMode::Output, "new\r\n\r\nx\xE7"},
        {FileMode::Append, "old\r\nnew\r\n\r\nx\xE7"},
        {FileMode::Binary, "new\r\n\r\nx\xE7"},  // written over the start, nothing emptied
    };
    for (const auto& [mode, after] : cases) {
        tmp.write("m.txt", "old\r\n");
        ASSERT_EQ(FileOpen(1, tmp.file("m.txt"), mode), 0);
        EXPECT_EQ(FileWrite(1, "new", true) + FileWrite(1, "", true) + FileWrite(1, "x\xE7", false),
                  0);
        EXPECT_EQ(FileClose(1), 0);
        EXPECT_EQ(tmp.read("m.txt"), after) << static_cast<int>(mode);
    }
}

TEST_F(FileHandlesTest, OpenFailuresGiveTheHostNumbers) {
    ASSERT_EQ(::mkdir(tmp.file("dir").c_str(), 0755), 0);
    const struct {
        std::string path;
        FileMode mode;
        std::int16_t err;
    } cases[] = {
        {tmp.file("missing.txt"), FileMode::Input, kErrFileNotFound},
        {tmp.file("nofolder/a.txt"), FileMode::Input, kErrPathNotFound},
        {tmp.file("dir"), FileMode::Input, kErrPathFileAccess},
        {"", FileMode::Input, kErrBadFileNameOrNumber},
        {"/dev/zero", FileMode::Input, kErrPathFileAccess},  // endless: no text file
    };
    for (const auto& c : cases) {
        EXPECT_EQ(FileOpen(1, c.path, c.mode), c.err) << c.path;
        EXPECT_FALSE(FileIsOpen(1));
    }
    // Nor is a disk, which would be read whole as one line; tried on the first one there is.
    std::error_code ec;
    for (const auto& entry : std::filesystem::directory_iterator("/dev", ec)) {
        if (!entry.is_block_file(ec)) continue;
        EXPECT_EQ(FileOpen(1, entry.path().string(), FileMode::Input), kErrPathFileAccess);
        break;
    }
}

// Numbers are handed out lowest first and checked; a file open under one number is not emptied
// through another, though it may be read twice.
TEST_F(FileHandlesTest, NumbersAreHandedOutLowestFirstAndChecked) {
    tmp.write("a", "keep");
    for (std::int16_t n = 1; n <= 3; ++n)
        ASSERT_EQ(FileOpen(n, tmp.file("a"), FileMode::Input), 0);
    FileClose(2);
    EXPECT_EQ(FreeFile(), 2);
    EXPECT_EQ(FileOpen(3, tmp.file("a"), FileMode::Input), kErrFileAlreadyOpen);
    EXPECT_EQ(FileOpen(2, tmp.file("a"), FileMode::Output), kErrFileAlreadyOpen);
    EXPECT_EQ(FileOpen(0, tmp.file("a"), FileMode::Input), kErrBadFileNameOrNumber);
    EXPECT_EQ(FileOpen(512, tmp.file("a"), FileMode::Input), kErrBadFileNameOrNumber);
    std::string line;
    EXPECT_EQ(FileWrite(1, "x", true), kErrBadFileNameOrNumber);  // open for input
    EXPECT_EQ(FileReadLine(9, line), kErrBadFileNameOrNumber);
    EXPECT_EQ(FileClose(9), 0);  // closing what is not open is harmless, as on the host
    EXPECT_EQ(tmp.read("a"), "keep");
    FileCloseAll();
    EXPECT_EQ(FreeFile(), 1);
}

// Delete removes plain files only, never a folder or an open file; DirCreate makes one
// folder, "\" separating folders as "/" does.
TEST_F(FileHandlesTest, DeleteAndDirCreateGiveTheHostNumbers) {
    tmp.write("plain", "x");
    tmp.write("open", "x");
    ASSERT_EQ(::mkdir(tmp.file("dir").c_str(), 0755), 0);
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

TEST(HostTextTest, HostFormKeepsEveryByteAndHostTextBecomesWindows1252) {
    std::string all;
    for (int b = 0; b < 256; ++b)
        all += static_cast<char>(b);
    EXPECT_EQ(FromHostText(ToHostText(all)), all);
    EXPECT_EQ(HostPath("Cfg\\Liga\xE7\xE3o\\\x80"), "Cfg/Liga\xC3\xA7\xC3\xA3o/\xE2\x82\xAC");
    // Host text becomes Windows-1252: '?' for what it lacks, broken bytes kept.
    const std::pair<std::string, std::string> cases[] = {
        {"a\xE2\x9C\x93", "a?"},           // a character Windows-1252 lacks
        {"\xE2\x82", "\xE2\x82"},          // cut short
        {"\xED\xA0\x80", "\xED\xA0\x80"},  // a surrogate is no character
    };
    for (const auto& [host, text] : cases)
        EXPECT_EQ(FromHostText(host), text) << host;
}

}  // namespace
}  // namespace lumbra::platform
