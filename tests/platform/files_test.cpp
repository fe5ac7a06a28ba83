#include "platform/file_handles.h"
#include "platform/host_text.h"

#include <gtest/gtest.h>

#include "tests/platform/file_cases.h"

namespace lumbra::platform {
namespace {

// A read the system fails ends the lines with the device's error, at once.
TEST_F(FileHandlesTest, AFailedReadEndsTheLinesWithTheDevicesError) {
    ASSERT_EQ(FileOpen(1, "/proc/self/mem", FileMode::Input), 0);
    std::int16_t end = 0;
    EXPECT_TRUE(Lines(end).empty());
    EXPECT_EQ(end, kErrDeviceIo);
}

TEST_F(FileHandlesTest, EachModeWritesByteExactAndTreatsOldContentAsTheHostDoes) {
    const std::pair<FileMode, std::string> cases[] = {
        {FileMode::Output, kSample},
        {FileMode::Append, "old\r\n" + kSample},
        {FileMode::Binary, kSample},  // written over the start, nothing emptied
    };
    for (const auto& [mode, after] : cases) {
        tmp.write("m.txt", "old\r\n");
        ASSERT_EQ(FileOpen(1, tmp.file("m.txt"), mode), 0);
        EXPECT_EQ(WriteSample(), 0);
        EXPECT_EQ(FileClose(1), 0);
        EXPECT_EQ(tmp.read("m.txt"), after) << static_cast<int>(mode);
    }
}

// A disk would be read whole as one line: it is no text file. Tried on the first one there is.
TEST_F(FileHandlesTest, ADiskIsNoTextFile) {
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
