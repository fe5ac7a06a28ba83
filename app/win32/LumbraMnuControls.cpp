// The window's controls and menu bar, made from the layout table and placed at the window's
// density.

#include <windows.h>
// After windows.h, which it builds on.
#include <commctrl.h>

#include <cstring>

#include "app/win32/LumbraMnu.h"
#include "app/win32/text_box_filter.h"
#include "app/window_layout.h"
#include "platform/win32/wide_text.h"

namespace lumbra {
namespace {

// Command identifiers: controls from kFirstControlId in the layout's order, menu entries from
// kFirstMenuId in theirs. Both stay clear of IDOK and IDCANCEL, which IsDialogMessageW sends.
constexpr int kFirstControlId = 100;
constexpr int kFirstMenuId = 1000;
// Lines a drop-down list shows when open.
constexpr int kDroppedLines = 8;

struct ClassStyle {
    const wchar_t* cls;
    DWORD style;
    DWORD exStyle;
};

ClassStyle StyleOf(CtlKind kind) {
    switch (kind) {
        case CtlKind::Label:
            return {WC_STATICW, SS_LEFT | SS_NOPREFIX, 0};
        case CtlKind::Tabs:
            // Below every other control, and painting none of them.
            return {WC_TABCONTROLW, WS_TABSTOP | WS_CLIPSIBLINGS, 0};
        case CtlKind::Frame:
            return {WC_BUTTONW, BS_GROUPBOX, 0};
        case CtlKind::Panel:
            // Drawn by the window: a raised bevel round a centred caption.
            return {WC_STATICW, SS_OWNERDRAW, 0};
        case CtlKind::DropDown:
            return {WC_COMBOBOXW, CBS_DROPDOWNLIST | WS_VSCROLL | WS_TABSTOP, 0};
        case CtlKind::TextBox:
            return {WC_EDITW, ES_AUTOHSCROLL | WS_TABSTOP, WS_EX_CLIENTEDGE};
        case CtlKind::Button:
            return {WC_BUTTONW, BS_PUSHBUTTON | WS_TABSTOP, 0};
        case CtlKind::List:
            return {WC_LISTBOXW, LBS_NOINTEGRALHEIGHT | WS_VSCROLL, WS_EX_CLIENTEDGE};
        case CtlKind::StatusBar:
            // Placed by the layout, not by the status bar's own rule (the bottom of its parent).
            return {STATUSCLASSNAMEW, CCS_NORESIZE | CCS_NOPARENTALIGN | CCS_NODIVIDER, 0};
    }
    return {WC_STATICW, 0, 0};
}

// The page a control sits on, through its frames; -1 for none.
int PageOf(const CtlLayout& c) {
    if (c.parent[0] == '#') return c.parent[1] - '0';
    if (c.parent[0] == '\0') return -1;
    const CtlLayout* parent = FindControl(c.parent);
    return parent != nullptr ? PageOf(*parent) : -1;
}

// The control's rectangle in twips from the client area's corner, through its parents: a page's
// controls are placed relative to the whole tab control.
RECT AbsoluteTwips(const CtlLayout& c) {
    POINT origin{0, 0};
    const char* parent = c.parent[0] == '#' ? "tbOpc" : c.parent;
    if (parent[0] != '\0') {
        if (const CtlLayout* p = FindControl(parent); p != nullptr) {
            const RECT outer = AbsoluteTwips(*p);
            origin = {outer.left, outer.top};
        }
    }
    return {origin.x + c.left, origin.y + c.top, origin.x + c.left + c.width,
            origin.y + c.top + c.height};
}

}  // namespace

int LumbraMnu::commandId(const char* ctl) const {
    const auto controls = LumbraMnuControls();
    for (std::size_t i = 0; i < controls.size(); ++i)
        if (std::strcmp(controls[i].name, ctl) == 0) return kFirstControlId + static_cast<int>(i);
    const auto menus = LumbraMnuMenus();
    for (std::size_t i = 0; i < menus.size(); ++i)
        if (std::strcmp(menus[i].name, ctl) == 0) return kFirstMenuId + static_cast<int>(i);
    return 0;
}

void LumbraMnu::createControls() {
    const HINSTANCE instance = ::GetModuleHandleW(nullptr);
    for (const CtlLayout& c : LumbraMnuControls()) {
        const ClassStyle s = StyleOf(c.kind);
        const int page = PageOf(c);
        // Every control is a child of the main window (a group box passes no notices on); pages
        // show their controls when they come to the front.
        const DWORD visible = page < 0 ? WS_VISIBLE : 0;
        const HWND hwnd = ::CreateWindowExW(
            s.exStyle, s.cls, platform::ToWide(c.caption).c_str(), WS_CHILD | visible | s.style, 0,
            0, 0, 0, window_, reinterpret_cast<HMENU>(static_cast<INT_PTR>(commandId(c.name))),
            instance, nullptr);
        if (c.kind == CtlKind::TextBox) FilterTextBox(hwnd);
        controls_.push_back({&c, hwnd, page});
    }
    // Children are painted and reached (Tab) from the top of the order down: the layout's order,
    // with the tab control under all of them.
    for (const Control& c : controls_)
        ::SetWindowPos(c.hwnd, HWND_BOTTOM, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
    ::SetWindowPos(control("tbOpc"), HWND_BOTTOM, 0, 0, 0, 0,
                   SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);

    const HWND tabs = control("tbOpc");
    const auto pages = LumbraMnuPages();
    for (std::size_t i = 0; i < pages.size(); ++i) {
        std::wstring caption = platform::ToWide(pages[i]);
        TCITEMW item{};
        item.mask = TCIF_TEXT | TCIF_PARAM;
        item.pszText = caption.data();
        item.lParam = static_cast<LPARAM>(i);
        TabCtrl_InsertItem(tabs, static_cast<int>(i), &item);
    }
}

void LumbraMnu::createMenu() {
    menu_ = ::CreateMenu();
    const auto menus = LumbraMnuMenus();
    for (const MenuLayout& m : menus) {
        if (m.menu[0] != '\0') continue;
        const HMENU popup = ::CreatePopupMenu();
        for (const MenuLayout& e : menus)
            if (std::strcmp(e.menu, m.name) == 0)
                ::AppendMenuW(popup, MF_STRING, static_cast<UINT_PTR>(commandId(e.name)),
                              platform::ToWide(e.caption).c_str());
        ::AppendMenuW(menu_, MF_POPUP, reinterpret_cast<UINT_PTR>(popup),
                      platform::ToWide(m.caption).c_str());
    }
    ::SetMenu(window_, menu_);
}

void LumbraMnu::layOut(int dpi) {
    dpi_ = dpi;
    fonts_.make(dpi);
    for (const Control& c : controls_) {
        const RECT t = AbsoluteTwips(*c.layout);
        const int x = TwipsToPixels(t.left, dpi);
        const int y = TwipsToPixels(t.top, dpi);
        const int w = TwipsToPixels(t.right, dpi) - x;
        const int h = TwipsToPixels(t.bottom, dpi) - y;
        ::SendMessageW(c.hwnd, WM_SETFONT, reinterpret_cast<WPARAM>(fonts_.get(c.layout->font)),
                       FALSE);
        if (c.layout->kind != CtlKind::DropDown) {
            ::SetWindowPos(c.hwnd, nullptr, x, y, w, h, SWP_NOZORDER | SWP_NOACTIVATE);
            continue;
        }
        // A drop-down list's height is its selection field's, set through the field's item
        // height; the height it is given is that of the open list.
        const auto item = static_cast<int>(::SendMessageW(c.hwnd, CB_GETITEMHEIGHT, 0, 0));
        ::SetWindowPos(c.hwnd, nullptr, x, y, w, h + item * kDroppedLines + 2,
                       SWP_NOZORDER | SWP_NOACTIVATE);
        // Measured, not computed: systems differ in what the asked height includes.
        auto field =
            static_cast<int>(::SendMessageW(c.hwnd, CB_GETITEMHEIGHT, static_cast<WPARAM>(-1), 0));
        for (int tries = 0; tries < 3; ++tries) {
            RECT now{};
            ::GetWindowRect(c.hwnd, &now);
            const int off = h - (now.bottom - now.top);
            if (off == 0 || field + off <= 0) break;
            field += off;
            ::SendMessageW(c.hwnd, CB_SETITEMHEIGHT, static_cast<WPARAM>(-1), field);
        }
    }
    // The client area is the layout's; the frame and the menu bar come round it (the menu bar may
    // take two lines, so the outcome is measured and corrected once).
    const int cw = TwipsToPixels(kClientWidthTwips, dpi);
    const int ch = TwipsToPixels(kClientHeightTwips, dpi);
    RECT frame{0, 0, cw, ch};
    ::AdjustWindowRectEx(&frame, static_cast<DWORD>(::GetWindowLongPtrW(window_, GWL_STYLE)), TRUE,
                         static_cast<DWORD>(::GetWindowLongPtrW(window_, GWL_EXSTYLE)));
    int ww = frame.right - frame.left;
    int wh = frame.bottom - frame.top;
    for (int tries = 0; tries < 2; ++tries) {
        ::SetWindowPos(window_, nullptr, 0, 0, ww, wh, SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
        RECT client{};
        ::GetClientRect(window_, &client);
        if (client.right == cw && client.bottom == ch) break;
        ww += cw - client.right;
        wh += ch - client.bottom;
    }
    ::InvalidateRect(window_, nullptr, TRUE);
}

}  // namespace lumbra
