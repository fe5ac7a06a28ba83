#include "platform/file_handles.h"
#include "platform/host_text.h"

#include <gtest/gtest.h>

#include <thread>

#include "platform/file_replace.h"
#include "platform/write_stall.h"
#include "tests/platform/file_cases.h"
#include "tests/support/pty_pair.h"

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

// A terminal as a file port takes every byte however slowly read, or fails once it stalls.
TEST_F(FileHandlesTest, ATerminalTakesEveryByteOrFailsTheWriteSayingItStalled) {
    test::PtyPair pty;
    ASSERT_EQ(FileOpen(1, pty.slavePath(), FileMode::Output), 0);
    std::string payload(256 * 1024, '\0'), got;
    for (std::size_t i = 0; i < payload.size(); ++i)
        payload[i] = static_cast<char>('a' + i % 26);
    std::thread reader([&] { got = pty.readExactly(payload.size()); });
    EXPECT_EQ(FileWrite(1, payload, false), 0);
    reader.join();
    EXPECT_TRUE(got == payload) << got.size() << " bytes";
    SetWriteStallLimit(std::chrono::milliseconds(300));
    const std::int16_t err = FileWrite(1, std::string(1 << 20, 'x'), false);
    SetWriteStallLimit({});
    EXPECT_EQ(err, kErrDeviceTimeout);
    const std::string stalled = ErrDescription(err) + ": a porta n\xE3o aceitou nenhum byte";
    EXPECT_EQ(FileErrText(err).substr(0, stalled.size()), stalled);
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

// Never a folder, nor anything under /dev.
TEST_F(FileHandlesTest, OnlyPlainFilesLinksAndFreeNamesAreReplacedByRename) {
    tmp.write("plain", "x");
    std::filesystem::create_directory(tmp.file("dir"));
    std::filesystem::create_symlink("/dev/null", tmp.file("link"));
    const std::pair<std::string, bool> cases[] = {
        {tmp.file("plain"), true}, {tmp.file("new"), true},    {tmp.file("link"), true},
        {tmp.file("dir"), false},  {"/dev/lumbra-new", false}, {"", false}};
    for (const auto& [path, replaceable] : cases)
        EXPECT_EQ(ReplaceableByRename(path), replaceable) << path;
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
