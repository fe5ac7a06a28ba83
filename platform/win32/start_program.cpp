#include "platform/start_program.h"

#include <windows.h>

#include "platform/win32/wide_text.h"

namespace lumbra::platform {
namespace {

// One word of a command line as the C runtime of the started program splits it again: quoted
// when it has blanks or quotes (or is empty), a quote escaped by a backslash, and the backslashes
// before a quote or the closing quote doubled.
std::wstring Quoted(const std::wstring& word) {
    if (!word.empty() && word.find_first_of(L" \t\n\v\"") == std::wstring::npos) return word;
    std::wstring out = L"\"";
    std::size_t slashes = 0;
    for (const wchar_t c : word) {
        if (c == L'\\') {
            ++slashes;
            continue;
        }
        out.append(c == L'"' ? slashes * 2 + 1 : slashes, L'\\');
        slashes = 0;
        out += c;
    }
    out.append(slashes * 2, L'\\');
    return out + L"\"";
}

}  // namespace

void StartProgram(const std::string& program, const std::vector<std::string>& args,
                  std::function<void()> failed) {
    std::wstring line = Quoted(ToWide(program));
    for (const std::string& a : args)
        line += L" " + Quoted(ToWide(a));
    STARTUPINFOW startup{};
    startup.cb = sizeof startup;
    startup.dwFlags = STARTF_USESHOWWINDOW;
    startup.wShowWindow = SW_SHOWNORMAL;
    PROCESS_INFORMATION process{};
    // No application name: Windows finds a bare name as it does for a typed command (the program's
    // folder, the system folders, then PATH), and no shell stands between. A group of its own keeps
    // a Ctrl+C meant for this program away from it.
    if (!::CreateProcessW(nullptr, line.data(), nullptr, nullptr, FALSE,
                          CREATE_NEW_PROCESS_GROUP | CREATE_UNICODE_ENVIRONMENT, nullptr, nullptr,
                          &startup, &process)) {
        if (failed) failed();
        return;
    }
    // Nobody waits for it.
    ::CloseHandle(process.hThread);
    ::CloseHandle(process.hProcess);
}

}  // namespace lumbra::platform
