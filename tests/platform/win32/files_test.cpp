#include <windows.h>

#include <algorithm>
#include <string>

#include "platform/win32/wide_text.h"
#include "tests/platform/file_cases.h"

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
    std::replace(wide.begin(), wide.end(), L'/', L'\\');
    return wide;
}

// Names reach Windows in UTF-16 through the one codec, written with "/" or "\", relative or
// absolute, and past the classic length limit; the bytes written are exactly the ones given.
TEST_F(FileHandlesTest, EachModeWritesByteExactUnderAnyFormOfTheName) {
    const test::ScopedCurrentDir cwd(tmp.path());
    const std::string folder(200, 'd');
    ASSERT_EQ(DirCreate(folder), 0);
    const std::string deep = folder + "\\" + std::string(100, 'f');
    const std::string old = "old old old old\r\n";  // longer than what is written
    const struct {
        FileMode mode;
        std::string name;
        std::wstring host;
        std::string after;
    } cases[] = {
        {FileMode::Output, tmp.file("Liga\xE7\xE3o\x80.txt"),
         Backslashed(tmp.path()) + L"\\Liga\u00E7\u00E3o\u20AC.txt", kSample},
        {FileMode::Output, "o.txt", L"o.txt", kSample},
        {FileMode::Append, tmp.path() + "\\a.txt", L"a.txt", old + kSample},
        {FileMode::Binary, "b.txt", L"b.txt", kSample + old.substr(kSample.size())},
        {FileMode::Output, deep, L"\\\\?\\" + Backslashed(tmp.path() + "/" + deep), kSample},
    };
    for (const char* name : {"o.txt", "a.txt", "b.txt"})
        tmp.write(name, old);
    for (const auto& [mode, name, host, after] : cases) {
        ASSERT_EQ(FileOpen(1, name, mode), 0) << name.substr(0, 40);
        EXPECT_EQ(WriteSample(), 0);
        EXPECT_EQ(FileClose(1), 0);
        EXPECT_EQ(HostBytes(host), after) << name.substr(0, 40);
    }
}

// The same file reached by another spelling of its name is the file held open: it is neither
// emptied through another number nor deleted.
TEST_F(FileHandlesTest, AFileHeldOpenIsKnownByAnyOfItsNames) {
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

TEST_F(FileHandlesTest, ADeviceIsNeitherDeletedNorMadeAFolder) {
    EXPECT_EQ(FileDelete("NUL"), kErrPathFileAccess);
    EXPECT_EQ(DirCreate("LPT1"), kErrPathFileAccess);
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
