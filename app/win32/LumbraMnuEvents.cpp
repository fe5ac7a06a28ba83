// The window's procedure: which message runs which handler of the form.

#include <windows.h>
// After windows.h, which it builds on.
#include <commctrl.h>

#include <cstring>

#include "app/win32/LumbraMnu.h"
#include "app/window_layout.h"
#include "platform/win32/wide_text.h"
#include "platform/win32/win_busy_pointer.h"

namespace lumbra {
namespace {

constexpr wchar_t kWindowClass[] = L"LumbraMnu";
// WM_DPICHANGED, which the headers of Windows 7 lack.
constexpr UINT kDpiChanged = 0x02E0;

using Handler = void (LumbraMnuForm::*)();

struct Event {
    const char* control;
    // The notification code, 0 for a menu entry.
    int code;
    Handler handler;
};

// A new selection of the drawer mode, and picking the entry already selected, are both a click of
// the list.
constexpr Event kEvents[] = {
    {"txCnvDec", EN_CHANGE, &LumbraMnuForm::txCnvDec_Change},
    {"txCnvHex", EN_CHANGE, &LumbraMnuForm::txCnvHex_Change},
    {"cmLigTst", BN_CLICKED, &LumbraMnuForm::cmLigTst_Click},
    {"cmGavAbr", BN_CLICKED, &LumbraMnuForm::cmGavAbr_Click},
    {"cmAbrCic", BN_CLICKED, &LumbraMnuForm::cmAbrCic_Click},
    {"cmDisExe", BN_CLICKED, &LumbraMnuForm::cmDisExe_Click},
    {"cmDisTxm", BN_CLICKED, &LumbraMnuForm::cmDisTxm_Click},
    {"cbGavAbr", CBN_SELCHANGE, &LumbraMnuForm::cbGavAbr_Click},
    {"cbGavAbr", CBN_SELENDOK, &LumbraMnuForm::cbGavAbr_Click},
    {"cmFim", BN_CLICKED, &LumbraMnuForm::cmFim_Click},
    {"mnuLerCfg", 0, &LumbraMnuForm::mnuLerCfg_Click},
    {"mnuTbCfg", 0, &LumbraMnuForm::mnuTbCfg_Click},
    {"mnuFim", 0, &LumbraMnuForm::mnuFim_Click},
};

void RegisterWindowClass(HINSTANCE instance, WNDPROC proc) {
    WNDCLASSEXW wc{};
    wc.cbSize = sizeof wc;
    wc.lpfnWndProc = proc;
    wc.hInstance = instance;
    // The program's icon (resource 1), when the program carries one.
    wc.hIcon = ::LoadIconW(instance, MAKEINTRESOURCEW(1));
    if (wc.hIcon == nullptr) wc.hIcon = ::LoadIconW(nullptr, IDI_APPLICATION);
    wc.hCursor = ::LoadCursorW(nullptr, IDC_ARROW);
    wc.hbrBackground = reinterpret_cast<HBRUSH>(COLOR_BTNFACE + 1);
    wc.lpszClassName = kWindowClass;
    ::RegisterClassExW(&wc);
}

// A 3-D caption panel: a raised bevel round its caption, centred both ways.
void DrawPanel(const DRAWITEMSTRUCT& item) {
    RECT rc = item.rcItem;
    ::FillRect(item.hDC, &rc, ::GetSysColorBrush(COLOR_BTNFACE));
    ::DrawEdge(item.hDC, &rc, BDR_RAISEDINNER, BF_RECT);
    std::wstring caption(static_cast<std::size_t>(::GetWindowTextLengthW(item.hwndItem)) + 1,
                         L'\0');
    caption.resize(static_cast<std::size_t>(
        ::GetWindowTextW(item.hwndItem, caption.data(), static_cast<int>(caption.size()))));
    const auto font = reinterpret_cast<HFONT>(::SendMessageW(item.hwndItem, WM_GETFONT, 0, 0));
    const HGDIOBJ old = ::SelectObject(item.hDC, font);
    ::SetBkMode(item.hDC, TRANSPARENT);
    ::SetTextColor(item.hDC, ::GetSysColor(COLOR_BTNTEXT));
    ::DrawTextW(item.hDC, caption.c_str(), static_cast<int>(caption.size()), &rc,
                DT_CENTER | DT_VCENTER | DT_SINGLELINE | DT_NOPREFIX);
    ::SelectObject(item.hDC, old);
}

}  // namespace

LumbraMnu::LumbraMnu() {
    const HINSTANCE instance = ::GetModuleHandleW(nullptr);
    INITCOMMONCONTROLSEX common{sizeof common,
                                ICC_TAB_CLASSES | ICC_BAR_CLASSES | ICC_STANDARD_CLASSES};
    ::InitCommonControlsEx(&common);
    RegisterWindowClass(instance, &WindowProc);
    // A fixed frame: the layout has one size. The window paints under its children, since a group
    // box leaves its inside to its parent.
    const DWORD style = WS_OVERLAPPED | WS_CAPTION | WS_SYSMENU | WS_MINIMIZEBOX;
    ::CreateWindowExW(0, kWindowClass, platform::ToWide(kLumbraMnuCaption).c_str(), style,
                      CW_USEDEFAULT, CW_USEDEFAULT, 640, 480, nullptr, nullptr, instance, this);
    createMenu();
    createControls();
    layOut(WindowDpi(window_));
    showPage(0);
}

LRESULT CALLBACK LumbraMnu::WindowProc(HWND hwnd, UINT msg, WPARAM wParam, LPARAM lParam) {
    if (msg == WM_NCCREATE) {
        auto* self =
            static_cast<LumbraMnu*>(reinterpret_cast<CREATESTRUCTW*>(lParam)->lpCreateParams);
        self->window_ = hwnd;
        ::SetWindowLongPtrW(hwnd, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(self));
    }
    auto* self = reinterpret_cast<LumbraMnu*>(::GetWindowLongPtrW(hwnd, GWLP_USERDATA));
    if (self == nullptr) return ::DefWindowProcW(hwnd, msg, wParam, lParam);
    return self->handle(msg, wParam, lParam);
}

LRESULT LumbraMnu::handle(UINT msg, WPARAM wParam, LPARAM lParam) {
    const HWND hwnd = window_;
    switch (msg) {
        case WM_COMMAND:
            onCommand(LOWORD(wParam), HIWORD(wParam));
            return 0;
        case WM_NOTIFY: {
            const auto* note = reinterpret_cast<const NMHDR*>(lParam);
            if (note->hwndFrom == control("tbOpc") && note->code == TCN_SELCHANGE) {
                TCITEMW item{};
                item.mask = TCIF_PARAM;
                TabCtrl_GetItem(note->hwndFrom, TabCtrl_GetCurSel(note->hwndFrom), &item);
                showPage(static_cast<int>(item.lParam));
            }
            return 0;
        }
        case WM_DRAWITEM: {
            const auto* item = reinterpret_cast<const DRAWITEMSTRUCT*>(lParam);
            if (item->CtlType != ODT_STATIC) break;
            DrawPanel(*item);
            return TRUE;
        }
        case WM_SETCURSOR:
            if (const HCURSOR busy = platform::BusyCursor(); busy != nullptr) {
                ::SetCursor(busy);
                return TRUE;
            }
            break;
        case kDpiChanged: {
            const auto* suggested = reinterpret_cast<const RECT*>(lParam);
            ::SetWindowPos(hwnd, nullptr, suggested->left, suggested->top, 0, 0,
                           SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
            layOut(HIWORD(wParam));
            return 0;
        }
        case WM_CLOSE:
            onClose();
            return 0;
        case WM_QUERYENDSESSION:
            return TRUE;
        case WM_ENDSESSION:
            // The session ends the process after this: the channels close now.
            if (wParam != 0 && !unloaded_) {
                unloaded_ = true;
                form.Form_Unload();
            }
            return 0;
        case WM_DESTROY:
            if (quitOnDestroy_) ::PostQuitMessage(0);
            return 0;
        case WM_NCDESTROY:
            window_ = nullptr;
            for (Control& c : controls_)
                c.hwnd = nullptr;
            break;
        default:
            break;
    }
    return ::DefWindowProcW(hwnd, msg, wParam, lParam);
}

void LumbraMnu::onCommand(int id, int code) {
    // A text box the program writes tells setText's caller, not this.
    if (writing_ && code == EN_CHANGE) return;
    for (const Event& e : kEvents) {
        if (commandId(e.control) != id || e.code != code) continue;
        ++handling_;
        (form.*e.handler)();
        if (--handling_ == 0 && destroyPending_) {
            destroyPending_ = false;
            ::DestroyWindow(window_);
        }
        return;
    }
}

}  // namespace lumbra
