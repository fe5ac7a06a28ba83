// Lumbra: configures and tests the peripherals of a point-of-sale terminal.

#include <windows.h>
// After windows.h, which it builds on.
#include <shellapi.h>

#include <string>
#include <vector>

#include "app/win32/LumbraMnu.h"
#include "platform/msg_box.h"
#include "platform/program.h"
#include "platform/win32/win_msg_box.h"

namespace {

// The command line as Windows splits it, each word as UTF-8 (the host text the platform layer
// reads), so that a file name keeps every character the code page can hold.
std::vector<std::string> CommandWords() {
    std::vector<std::string> words;
    int count = 0;
    LPWSTR* wide = ::CommandLineToArgvW(::GetCommandLineW(), &count);
    if (wide == nullptr) return words;
    for (int i = 0; i < count; ++i) {
        const int size =
            ::WideCharToMultiByte(CP_UTF8, 0, wide[i], -1, nullptr, 0, nullptr, nullptr);
        std::string word(static_cast<std::size_t>(size > 0 ? size : 1), '\0');
        ::WideCharToMultiByte(CP_UTF8, 0, wide[i], -1, word.data(), size, nullptr, nullptr);
        word.resize(word.size() - 1);
        words.push_back(word);
    }
    ::LocalFree(wide);
    return words;
}

}  // namespace

int WINAPI wWinMain(HINSTANCE, HINSTANCE, PWSTR, int show) {
    const std::vector<std::string> words = CommandWords();
    std::vector<const char*> argv;
    for (const std::string& w : words)
        argv.push_back(w.c_str());
    lumbra::platform::SetProgramArgs(static_cast<int>(argv.size()), argv.data());

    lumbra::platform::WinMsgSink sink;
    lumbra::platform::SetMsgSink(&sink);
    int status = 0;
    {
        lumbra::LumbraMnu window;
        sink.setOwner(window.hwnd());
        window.quitOnDestroy();
        // A parameter file that cannot be opened ends the program here, before any window shows.
        window.Form_Load();
        window.show(show);
        status = lumbra::LumbraMnu::RunMessageLoop(window.hwnd());
    }
    lumbra::platform::SetMsgSink(nullptr);
    return status;
}
