#include "platform/file_handles.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <string>
#include <vector>

#include "tests/support/temp_dir.h"

namespace lumbra::platform {
namespace {

class FileHandlesTest : public ::testing::Test {
  protected:
    void TearDown() override { FileCloseAll(); }
    test::TempDir tmp;
};

// The lines, long ones shortened, for a readable failure message.
std::string Describe(const std::vector<std::string>& lines) {
    std::string out;
    for (const auto& l : lines)
        out += "[" + (l.size() <= 20 ? l : l.substr(0, 20) + "...") + "] ";
    return out;
}

TEST_F(FileHandlesTest, ReadLineEndsLinesAtCrLfCrAndLfThenReportsTheEnd) {
    const std::string longLine(64 * 1024 - 1, 'a');  // its CR ends the first chunk read
    const struct {
        std::string bytes;
        std::vector<std::string> lines;
    } cases[] = {
        {"a\r\nb\r\n", {"a", "b"}},
        {"a\rb\r", {"a", "b"}},
        {"a\nb\n", {"a", "b"}},
        {"a\n\rb", {"a", "", "b"}},  // LF then CR are two ends
        {"\r\n\r\nx", {"", "", "x"}},
        {"a\r\nlast", {"a", "last"}},  // the last line needs no terminator
        {"", {}},
        {std::string("\xE7\0\xFF\r\n", 5), {std::string("\xE7\0\xFF", 3)}},
        {longLine + "\r\nb", {longLine.substr(0, kMaxLineLength), "b"}},
        // Past the longest line, the rest up to the terminator is dropped, across chunks too.
        {std::string(kMaxLineLength + 1, 'a') + "\r\nb", {std::string(kMaxLineLength, 'a'), "b"}},
        {std::string(200000, 'c') + "\n\rd", {std::string(kMaxLineLength, 'c'), "", "d"}},
    };
    for (const auto& c : cases) {
        tmp.write("f.txt", c.bytes);
        ASSERT_EQ(FileOpen(1, tmp.file("f.txt"), FileMode::Input), 0);
        std::vector<std::string> lines;
        std::string line;
        std::int16_t rc = 0;
        while ((rc = FileReadLine(1, line)) == 0)
            lines.push_back(line);
        EXPECT_EQ(rc, kErrInputPastEnd);
        EXPECT_EQ(FileReadLine(1, line), kErrInputPastEnd);
        EXPECT_TRUE(lines == c.lines) << Describe(lines);
        FileClose(1);
    }
}

TEST_F(FileHandlesTest, EachModeWritesByteExactAndTreatsOldContentAsTheHostDoes) {
    const struct {
        FileMode mode;
        std::string after;
    } cases[] = {
        {FileMode::Output, "new\r\n\r\nx\xE7"},
        {FileMode::Append, "old\r\nnew\r\n\r\nx\xE7"},
        {FileMode::Binary, "new\r\n\r\nx\xE7"},  // written over the start, nothing emptied
    };
    for (const auto& c : cases) {
        tmp.write("m.txt", "old\r\n");
        ASSERT_EQ(FileOpen(1, tmp.file("m.txt"), c.mode), 0);
        EXPECT_EQ(FileWrite(1, "new", true), 0);
        EXPECT_EQ(FileWrite(1, "", true), 0);
        EXPECT_EQ(FileWrite(1, "x\xE7", false), 0);
        EXPECT_EQ(FileClose(1), 0);
        EXPECT_EQ(tmp.read("m.txt"), c.after) << static_cast<int>(c.mode);
    }
}

TEST_F(FileHandlesTest, OpenFailuresGiveTheHostNumbers) {
    tmp.write("plain", "x");
    ASSERT_EQ(::mkdir(tmp.file("dir").c_str(), 0755), 0);
    const struct {
        std::string path;
        FileMode mode;
        std::int16_t err;
    } cases[] = {
        {tmp.file("missing.txt"), FileMode::Input, kErrFileNotFound},
        {tmp.file("nofolder/a.txt"), FileMode::Input, kErrPathNotFound},
        {tmp.file("nofolder/a.txt"), FileMode::Output, kErrPathNotFound},
        {tmp.file("plain/a.txt"), FileMode::Input, kErrPathNotFound},
        {tmp.file("dir"), FileMode::Input, kErrPathFileAccess},
        {tmp.file("dir"), FileMode::Output, kErrPathFileAccess},
        {"", FileMode::Input, kErrBadFileNameOrNumber},
        {"/dev/zero", FileMode::Input, kErrPathFileAccess},  // endless: no text file
    };
    for (const auto& c : cases) {
        EXPECT_EQ(FileOpen(1, c.path, c.mode), c.err) << c.path;
        EXPECT_FALSE(FileIsOpen(1));
    }
}

TEST_F(FileHandlesTest, NumbersAreHandedOutLowestFirstAndChecked) {
    tmp.write("a", "x\r\n");
    for (std::int16_t n = 1; n <= 3; ++n)
        ASSERT_EQ(FileOpen(n, tmp.file("a"), FileMode::Input), 0);
    FileClose(2);
    EXPECT_EQ(FreeFile(), 2);
    EXPECT_EQ(FileOpen(3, tmp.file("a"), FileMode::Input), kErrFileAlreadyOpen);
    EXPECT_EQ(FileOpen(0, tmp.file("a"), FileMode::Input), kErrBadFileNameOrNumber);
    EXPECT_EQ(FileOpen(512, tmp.file("a"), FileMode::Input), kErrBadFileNameOrNumber);
    std::string line;
    EXPECT_EQ(FileWrite(1, "x", true), kErrBadFileNameOrNumber);  // open for input
    EXPECT_EQ(FileReadLine(9, line), kErrBadFileNameOrNumber);
    EXPECT_EQ(FileClose(9), 0);  // closing what is not open is harmless, as on the host
    FileCloseAll();
    EXPECT_EQ(FreeFile(), 1);
}

TEST_F(FileHandlesTest, OutputToAFileOpenUnderAnotherNumberIsRefusedWithoutEmptyingIt) {
    tmp.write("held", "keep");
    ASSERT_EQ(FileOpen(1, tmp.file("held"), FileMode::Input), 0);
    EXPECT_EQ(FileOpen(2, tmp.file("held"), FileMode::Output), kErrFileAlreadyOpen);
    EXPECT_EQ(FileOpen(2, tmp.file("held"), FileMode::Append), kErrFileAlreadyOpen);
    EXPECT_EQ(FileOpen(2, tmp.file("held"), FileMode::Input), 0);  // reading twice is allowed
    EXPECT_EQ(tmp.read("held"), "keep");
}

}  // namespace
}  // namespace lumbra::platform
