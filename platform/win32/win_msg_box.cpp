#include "platform/win32/win_msg_box.h"

#include <cstdio>

#include "platform/busy_pointer.h"
#include "platform/win32/wide_text.h"

namespace lumbra::platform {
namespace {

UINT BoxIcon(MsgIcon icon) {
    switch (icon) {
        case MsgIcon::Critical:
            return MB_ICONERROR;
        case MsgIcon::Exclamation:
            return MB_ICONWARNING;
        case MsgIcon::Information:
            return MB_ICONINFORMATION;
        case MsgIcon::Question:
            return MB_ICONQUESTION;
    }
    return 0;
}

// MessageBoxW has no button of our own wording: the box gets OK and Cancel, and a hook renames
// Cancel when the box comes up. One box at a time on this thread.
thread_local HHOOK renameHook = nullptr;
thread_local const std::wstring* stopCaption = nullptr;

LRESULT CALLBACK RenameCancel(int code, WPARAM wParam, LPARAM lParam) {
    const HHOOK hook = renameHook;
    if (code == HCBT_ACTIVATE && stopCaption != nullptr) {
        const auto box = reinterpret_cast<HWND>(wParam);
        wchar_t cls[16] = {};
        ::GetClassNameW(box, cls, 16);
        // The box's own dialog class; any other window activated first is left alone.
        if (std::wstring(cls) == L"#32770") {
            ::SetDlgItemTextW(box, IDCANCEL, stopCaption->c_str());
            ::UnhookWindowsHookEx(renameHook);
            renameHook = nullptr;
        }
    }
    return ::CallNextHookEx(hook, code, wParam, lParam);
}

BOOL CALLBACK HideWindow(HWND window, LPARAM) {
    ::ShowWindow(window, SW_HIDE);
    return TRUE;
}

}  // namespace

void WinMsgSink::show(const std::string& title, const std::string& text, MsgIcon icon) {
    MsgBoxStopButton* stop = CurrentStopButton();
    const HWND owner = owner_ != nullptr && ::IsWindowVisible(owner_) ? owner_ : nullptr;
    UINT flags = BoxIcon(icon) | MB_SETFOREGROUND | (owner == nullptr ? MB_TASKMODAL : 0);
    flags |= stop != nullptr ? MB_OKCANCEL | MB_DEFBUTTON1 : MB_OK;
    const std::wstring caption = stop != nullptr ? ToWide(stop->caption) : std::wstring();
    if (stop != nullptr) {
        stopCaption = &caption;
        renameHook = ::SetWindowsHookExW(WH_CBT, RenameCancel, nullptr, ::GetCurrentThreadId());
    }
    int answer = 0;
    {
        const BusyPointerPause waitingForTheUser;
        answer = ::MessageBoxW(owner, ToWide(text).c_str(), ToWide(title).c_str(), flags);
    }
    if (renameHook != nullptr) ::UnhookWindowsHookEx(renameHook);
    renameHook = nullptr;
    stopCaption = nullptr;
    // Cancel is the stop button; Escape and the box's close button answer the same, as a box's
    // rejecting button does.
    if (stop != nullptr && answer == IDCANCEL) stop->choose();
}

void WinMsgSink::endProgram(int status) {
    // Hidden rather than closed: closing would run the main window's shutdown a second time.
    ::EnumThreadWindows(::GetCurrentThreadId(), HideWindow, 0);
    std::fflush(nullptr);
    ::ExitProcess(static_cast<UINT>(status));
}

}  // namespace lumbra::platform
