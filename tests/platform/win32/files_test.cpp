#include <windows.h>

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "platform/file_handles.h"
#include "platform/file_system.h"
#include "platform/win32/wide_text.h"
#include "tests/support/temp_dir.h"

namespace lumbra::platform {
namespace {

// The file's bytes as Windows itself reads them, by its UTF-16 name; "" when it cannot.
std::string HostBytes(const std::wstring& name) {
    const HANDLE file =
        ::CreateFileW(name.c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                      OPEN_EXISTING, 0, nullptr);
    if (file == INVALID_HANDLE_VALUE) return {};
    std::string bytes(1 << 16, '\0');
    DWORD got = 0;
    ::ReadFile(file, bytes.data(), static_cast<DWORD>(bytes.size()), &got, nullptr);
    ::CloseHandle(file);
    bytes.resize(got);
    return bytes;
}

std::wstring Backslashed(std::string_view path) {
    std::wstring wide = ToWide(path);
    for (wchar_t& c : wide) {
        if (c == L'/') c = L'\\';
    }
    return wide;
}

class Win32FilesTest : public ::testing::Test {
  protected:
    void TearDown() override { FileCloseAll(); }
    test::TempDir tmp;
};

// Names reach Windows in UTF-16 through the one codec, written with "/" or "\", relative or
// absolute, and past the classic length limit; the bytes written are exactly the ones given.
TEST_F(Win32FilesTest, EachModeWritesByteExactUnderAnyFormOfTheName) {
    const test::ScopedCurrentDir cwd(tmp.path());
    const std::string folder(200, 'd');
    ASSERT_EQ(DirCreate(folder), 0);
    const std::string deep = folder + "\\" + std::string(100, 'f');
    const std::string old = "old old old old\r\n";  // longer than what is written
    const std::string written = "new\r\n\r\nx\xE7";
    const struct {
        FileMode mode;
        std::string name;
        std::wstring host;
        std::string after;
    } cases[] = {
        {FileMode::Output, tmp.file("Liga\xE7\xE3o\x80.txt"),
         Backslashed(tmp.path()) + L"\\Liga\u00E7\u00E3o\u20AC.txt", written},
        {FileMode::Output, "o.txt", L"o.txt", written},
        {FileMode::Append, tmp.path() + "\\a.txt", L"a.txt", old + written},
        {FileMode::Binary, "b.txt", L"b.txt", written + old.substr(written.size())},
        {FileMode::Output, deep, L"\\\\?\\" + Backslashed(tmp.path() + "/" + deep), written},
    };
    for (const char* name : {"o.txt", "a.txt", "b.txt"})
        tmp.write(name, old);
    for (const auto& [mode, name, host, after] : cases) {
        ASSERT_EQ(FileOpen(1, name, mode), 0) << name.substr(0, 40);
        EXPECT_EQ(FileWrite(1, "new", true) + FileWrite(1, "", true) + FileWrite(1, "x\xE7", false),
                  0);
        EXPECT_EQ(FileClose(1), 0);
        EXPECT_EQ(HostBytes(host), after) << name.substr(0, 40);
    }
}

// Lines end at CR LF, CR or LF, a CR LF split between two reads included, and are given whole.
TEST_F(Win32FilesTest, ReadLineEndsLinesAtCrLfCrAndLfThenReportsTheEnd) {
    const std::string chunk(64 * 1024 - 1, 'a');  // its CR ends the first read
    tmp.write("f.txt", chunk + "\r\na\r\nb\rc\n\rd\r\n" + std::string(70000, 'e') + "\r\nf");
    ASSERT_EQ(FileOpen(1, tmp.file("f.txt"), FileMode::Input), 0);
    std::vector<std::string> lines;
    std::string line;
    std::int16_t end = 0;
    while ((end = FileReadLine(1, line)) == 0)
        lines.push_back(line);
    EXPECT_TRUE(lines == (std::vector<std::string>{chunk, "a", "b", "c", "", "d",
                                                   std::string(70000, 'e'), "f"}));
    EXPECT_EQ(end, kErrInputPastEnd);
    EXPECT_EQ(FileReadLine(1, line), kErrInputPastEnd);
}

// What is missing, malformed or not a file gives the host's numbers; a port or printer that is
// not there is "Device unavailable" and leaves no file of its name behind, and no device is
// opened for reading.
TEST_F(Win32FilesTest, OpenFailuresGiveTheHostNumbersAndNoDeviceBecomesAFile) {
    const test::ScopedCurrentDir cwd(tmp.path());
    ASSERT_EQ(DirCreate("dir"), 0);
    const struct {
        std::string path;
        FileMode mode;
        std::int16_t err;
    } cases[] = {
        {"missing.txt", FileMode::Input, kErrFileNotFound},
        {tmp.file("nofolder/a.txt"), FileMode::Output, kErrPathNotFound},
        {"dir", FileMode::Output, kErrPathFileAccess},
        {"a?b", FileMode::Output, kErrBadFileNameOrNumber},
        {"", FileMode::Input, kErrBadFileNameOrNumber},
        {"COM7", FileMode::Output, kErrDeviceUnavailable},
        {"com8:", FileMode::Append, kErrDeviceUnavailable},
        {"//./COM3", FileMode::Binary, kErrDeviceUnavailable},
        {"\\\\.\\pipe\\lumbra-nobody", FileMode::Output, kErrDeviceUnavailable},
        {"\\\\lumbra-no-pc\\EPSON", FileMode::Output, kErrDeviceUnavailable},
        {"COM7", FileMode::Input, kErrPathFileAccess},
        {"nul", FileMode::Input, kErrPathFileAccess},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(FileOpen(1, c.path, c.mode), c.err) << c.path;
        EXPECT_FALSE(FileIsOpen(1));
    }
    ASSERT_EQ(FileOpen(1, "NUL", FileMode::Output), 0);
    EXPECT_EQ(FileWrite(1, "x", true) + FileClose(1), 0);
    WIN32_FIND_DATAW found{};
    const HANDLE search = ::FindFirstFileW((Backslashed(tmp.path()) + L"\\*").c_str(), &found);
    ASSERT_NE(search, INVALID_HANDLE_VALUE);
    std::vector<std::wstring> names;
    do {
        names.emplace_back(found.cFileName);
    } while (::FindNextFileW(search, &found) != 0);
    ::FindClose(search);
    EXPECT_TRUE(names == (std::vector<std::wstring>{L".", L"..", L"dir"}));
}

// The same file reached by another spelling of its name is the file held open: it is neither
// emptied through another number nor deleted.
TEST_F(Win32FilesTest, AFileHeldOpenIsKnownByAnyOfItsNames) {
    const test::ScopedCurrentDir cwd(tmp.path());
    tmp.write("held.txt", "keep");
    ASSERT_EQ(FileOpen(1, tmp.file("held.txt"), FileMode::Input), 0);
    for (const std::string& name : {std::string("HELD.TXT"), tmp.path() + "\\.\\held.txt"}) {
        EXPECT_TRUE(FileHeldOpen(name)) << name;
        EXPECT_EQ(FileOpen(2, name, FileMode::Output), kErrFileAlreadyOpen) << name;
        EXPECT_EQ(FileOpen(2, name, FileMode::Append), kErrFileAlreadyOpen) << name;
        EXPECT_EQ(FileDelete(name), kErrPathFileAccess) << name;
    }
    EXPECT_EQ(FileOpen(2, "held.txt", FileMode::Input), 0);  // read twice
    EXPECT_FALSE(FileHeldOpen("COM7"));
    FileCloseAll();
    EXPECT_EQ(tmp.read("held.txt"), "keep");
    EXPECT_FALSE(FileHeldOpen("held.txt"));
    EXPECT_EQ(FileDelete("held.txt"), 0);
}

TEST_F(Win32FilesTest, DeleteAndDirCreateGiveTheHostNumbers) {
    const test::ScopedCurrentDir cwd(tmp.path());
    tmp.write("plain", "x");
    ASSERT_EQ(DirCreate("dir"), 0);
    const std::pair<std::string, std::int16_t> deletes[] = {{"plain", 0},
                                                            {"missing", kErrFileNotFound},
                                                            {"nofolder/a", kErrPathNotFound},
                                                            {"dir", kErrPathFileAccess},
                                                            {"NUL", kErrPathFileAccess}};
    for (const auto& [name, err] : deletes)
        EXPECT_EQ(FileDelete(name), err) << name;
    tmp.write("plain", "x");
    const std::pair<std::string, std::int16_t> folders[] = {{"dir", kErrPathFileAccess},
                                                            {"no/deeper", kErrPathNotFound},
                                                            {"plain/sub", kErrPathNotFound},
                                                            {"dir\\sub", 0},
                                                            {"LPT1", kErrPathFileAccess}};
    for (const auto& [name, err] : folders)
        EXPECT_EQ(DirCreate(name), err) << name;
}

TEST(WideTextTest, EveryByteComesBackAndWhatWindows1252LacksBecomesAQuestionMark) {
    std::string all;
    for (int b = 0; b < 256; ++b)
        all += static_cast<char>(b);
    EXPECT_EQ(FromWide(ToWide(all)), all);
    EXPECT_EQ(ToWide("\x80\x81\x9F\xFF"), L"\u20AC\u0081\u0178\u00FF");
    bool whole = true;
    EXPECT_EQ(FromWide(L"a\u2713\U0001F600b", &whole), "a??b");  // a pair is one character
    EXPECT_FALSE(whole);
}

}  // namespace
}  // namespace lumbra::platform
