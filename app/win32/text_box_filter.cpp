#include "app/win32/text_box_filter.h"

#include <string>

#include "platform/win32/wide_text.h"

namespace lumbra {
namespace {

bool Fits(std::wstring_view text) {
    bool whole = true;
    platform::FromWide(text, &whole);
    return whole;
}

// The text a paste would bring in; empty when the clipboard holds none.
std::wstring ClipboardText(HWND owner) {
    std::wstring text;
    if (!::OpenClipboard(owner)) return text;
    if (const HANDLE data = ::GetClipboardData(CF_UNICODETEXT); data != nullptr) {
        if (const auto* chars = static_cast<const wchar_t*>(::GlobalLock(data)); chars != nullptr) {
            text = chars;
            ::GlobalUnlock(data);
        }
    }
    ::CloseClipboard();
    return text;
}

LRESULT CALLBACK Filter(HWND box, UINT msg, WPARAM wParam, LPARAM lParam) {
    const auto edit = reinterpret_cast<WNDPROC>(::GetWindowLongPtrW(box, GWLP_USERDATA));
    bool refuse = false;
    // Control characters (Backspace, Ctrl+A...) are keys, not text. A character beyond the 16-bit
    // range comes as two halves: neither fits.
    if (msg == WM_CHAR && wParam >= 0x20) {
        const auto c = static_cast<wchar_t>(wParam);
        refuse = !Fits(std::wstring_view(&c, 1));
    }
    if (msg == WM_PASTE) refuse = !Fits(ClipboardText(box));
    if (refuse) {
        ::MessageBeep(MB_OK);
        return 0;
    }
    return ::CallWindowProcW(edit, box, msg, wParam, lParam);
}

}  // namespace

void FilterTextBox(HWND box) {
    // The edit class keeps nothing in the window's user data: the edit's own procedure goes there.
    const LONG_PTR edit = ::GetWindowLongPtrW(box, GWLP_WNDPROC);
    ::SetWindowLongPtrW(box, GWLP_USERDATA, edit);
    ::SetWindowLongPtrW(box, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&Filter));
}

}  // namespace lumbra
