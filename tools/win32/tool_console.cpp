#include "tools/tool_console.h"

#include <windows.h>
// After windows.h, which it builds on.
#include <shellapi.h>

#include "platform/host_text.h"
#include "platform/win32/wide_text.h"
#include "util/text/utf8.h"

namespace lumbra::ctl {
namespace {

HANDLE HandleOf(std::FILE* out) {
    return ::GetStdHandle(out == stderr ? STD_ERROR_HANDLE : STD_OUTPUT_HANDLE);
}

bool IsConsole(HANDLE handle) {
    DWORD mode = 0;
    return handle != nullptr && handle != INVALID_HANDLE_VALUE &&
           ::GetConsoleMode(handle, &mode) != 0;
}

// Every character of the word, so that one the program cannot send is named by its code point
// exactly as on the other hosts; a lone half of a surrogate pair is no character (U+FFFD).
std::string Utf8Of(std::wstring_view word) {
    std::string out;
    for (std::size_t i = 0; i < word.size(); ++i) {
        char32_t c = static_cast<char16_t>(word[i]);
        if (c >= 0xD800 && c <= 0xDFFF) {
            const char32_t low = i + 1 < word.size() ? static_cast<char16_t>(word[i + 1]) : 0;
            if (c <= 0xDBFF && low >= 0xDC00 && low <= 0xDFFF) {
                c = 0x10000 + ((c - 0xD800) << 10) + (low - 0xDC00);
                ++i;
            } else {
                c = 0xFFFD;
            }
        }
        AppendUtf8(out, c);
    }
    return out;
}

}  // namespace

std::vector<std::string> ToolArguments(int, char**) {
    std::vector<std::string> words;
    int count = 0;
    LPWSTR* wide = ::CommandLineToArgvW(::GetCommandLineW(), &count);
    if (wide == nullptr) return words;
    for (int i = 0; i < count; ++i)
        words.push_back(Utf8Of(wide[i]));
    ::LocalFree(wide);
    return words;
}

// A console is written in UTF-16, through the program's one Windows-1252 codec: every text the
// tool prints is Windows-1252 at heart. Pipes and files get the UTF-8 bytes themselves, written
// past the C runtime, which would turn each line end into CR LF.
void WriteText(std::FILE* out, std::string_view utf8) {
    const HANDLE handle = HandleOf(out);
    if (IsConsole(handle)) {
        const std::wstring wide = platform::ToWide(platform::FromHostText(utf8));
        std::size_t done = 0;
        while (done < wide.size()) {
            DWORD wrote = 0;
            const auto left = static_cast<DWORD>(wide.size() - done);
            if (::WriteConsoleW(handle, wide.data() + done, left, &wrote, nullptr) == 0 ||
                wrote == 0)
                return;
            done += wrote;
        }
        return;
    }
    std::size_t done = 0;
    while (done < utf8.size()) {
        DWORD wrote = 0;
        const auto left = static_cast<DWORD>(utf8.size() - done);
        // A reader that has gone away takes nothing more: the tool goes on without it.
        if (::WriteFile(handle, utf8.data() + done, left, &wrote, nullptr) == 0 || wrote == 0)
            return;
        done += wrote;
    }
}

bool IsTerminal(std::FILE* out) {
    return IsConsole(HandleOf(out));
}

}  // namespace lumbra::ctl
