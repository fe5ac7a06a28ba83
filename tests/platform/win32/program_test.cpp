#include "platform/program.h"

#include <windows.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <string>

#include "platform/file_handles.h"
#include "platform/win32/wide_text.h"
#include "tests/support/temp_dir.h"

namespace lumbra::platform {
namespace {

constexpr const char* kChildOutput = "LUMBRA_COMMAND_LINE_OUT";

std::wstring OwnFile() {
    std::wstring name(32768, L'\0');
    name.resize(::GetModuleFileNameW(nullptr, name.data(), static_cast<DWORD>(name.size())));
    return name;
}

// Run by the test below in a program of its own: writes the command line as the program reads it
// to the file the parent names.
TEST(ProgramChildTest, WritesItsCommandLine) {
    const char* out = std::getenv(kChildOutput);
    if (out == nullptr) GTEST_SKIP() << "run by CommandLineIsWhatWindowsGaveAsWindows1252";
    SetProgramArgs(__argc, __argv);
    ASSERT_EQ(FileOpen(1, out, FileMode::Output), 0);
    EXPECT_EQ(FileWrite(1, CommandLine(), false) + FileClose(1), 0);
}

// The arguments main received come from Windows' own command line, split as Windows splits it, in
// Windows-1252 whatever the machine's code page; words a caller makes up are host text.
TEST(ProgramTest, CommandLineIsWhatWindowsGaveAsWindows1252) {
    test::TempDir tmp;
    const std::string out = tmp.file("line.txt");
    ASSERT_NE(::SetEnvironmentVariableA(kChildOutput, out.c_str()), 0);
    std::wstring line =
        L"\"" + OwnFile() +
        L"\" --gtest_filter=ProgramChildTest.* -FP \"C:\\Dados Liga\u00E7\u00E3o\\a.par\""
        L"  \u20AC \u2713";
    STARTUPINFOW startup{};
    startup.cb = sizeof startup;
    PROCESS_INFORMATION child{};
    const BOOL started = ::CreateProcessW(nullptr, line.data(), nullptr, nullptr, FALSE, 0, nullptr,
                                          nullptr, &startup, &child);
    ::SetEnvironmentVariableA(kChildOutput, nullptr);
    ASSERT_NE(started, 0);
    ::WaitForSingleObject(child.hProcess, INFINITE);
    DWORD status = 1;
    ::GetExitCodeProcess(child.hProcess, &status);
    ::CloseHandle(child.hThread);
    ::CloseHandle(child.hProcess);
    EXPECT_EQ(status, 0u);
    EXPECT_EQ(tmp.read("line.txt"),
              "--gtest_filter=ProgramChildTest.* -FP C:\\Dados Liga\xE7\xE3o\\a.par \x80 ?");
    const char* const words[] = {"lumbra", "-FP", "Liga\xC3\xA7\xC3\xA3o.par"};
    SetProgramArgs(3, words);
    EXPECT_EQ(CommandLine(), "-FP Liga\xE7\xE3o.par");
    SetProgramArgs(0, nullptr);
    EXPECT_EQ(CommandLine(), "");
}

TEST(ProgramTest, ProgramFolderHoldsTheRunningProgramUnlessOverridden) {
    const std::wstring own = OwnFile();
    const std::string folder = FromWide(own.substr(0, own.find_last_of(L'\\')));
    for (const std::string over : {"", "D:\\Lumbra", ""}) {
        OverrideProgramFolder(over);
        EXPECT_EQ(ProgramFolder(), over.empty() ? folder : over);
    }
}

// A bare name is looked for in each folder of the search path in turn, with the extensions of
// PATHEXT in their order unless it ends in one; a name with a folder only there.
TEST(ProgramTest, ProgramFileFromNameSearchesThePathWithPathext) {
    test::TempDir first;
    test::TempDir second;
    for (const char* name : {"other.cmd", "both.exe", "notes.txt"})
        first.write(name, "");
    for (const char* name : {"tool.exe", "tool.cmd", "both.exe"})
        second.write(name, "");
    ::SetEnvironmentVariableW(L"PATHEXT", L".EXE;.CMD");
    const std::string path = "C:\\lumbra-missing;\"" + first.path() + "\";;" + second.path();
    const std::pair<std::string, std::string> cases[] = {
        {"tool", second.file("tool.exe")},
        {"TOOL.CMD", second.file("tool.cmd")},
        {"both", first.file("both.exe")},
        {"notes.txt", ""},  // no program
        {first.file("other"), first.file("other.cmd")},
        {"missing", ""},
        {"", ""},
    };
    for (auto [name, file] : cases) {
        std::replace(file.begin(), file.end(), '/', '\\');
        EXPECT_EQ(ProgramFileFromName(name, path), file) << name;
    }
    ::SetEnvironmentVariableW(L"PATHEXT", nullptr);
}

}  // namespace
}  // namespace lumbra::platform
