#include "app/win32/LumbraMnu.h"

#include <windows.h>
// After windows.h, which it builds on.
#include <commctrl.h>

#include <cstring>
#include <stdexcept>

#include "app/window_layout.h"
#include "platform/win32/wide_text.h"

namespace lumbra {
namespace {

// The message list shows its newest lines at the bottom of a window of this many lines.
constexpr int kMsgLines = 16;

}  // namespace

LumbraMnu::~LumbraMnu() {
    if (window_ != nullptr) ::DestroyWindow(window_);
}

void LumbraMnu::show(int how) {
    ::ShowWindow(window_, how);
    ::UpdateWindow(window_);
}

int LumbraMnu::RunMessageLoop(HWND window) {
    MSG msg{};
    while (::GetMessageW(&msg, nullptr, 0, 0) > 0) {
        // Tab and the arrow keys move between the controls, as in a dialog box.
        if (window != nullptr && ::IsWindow(window) && ::IsDialogMessageW(window, &msg)) continue;
        ::TranslateMessage(&msg);
        ::DispatchMessageW(&msg);
    }
    return static_cast<int>(msg.wParam);
}

const LumbraMnu::Control* LumbraMnu::find(const char* ctl) const {
    for (const Control& c : controls_)
        if (std::strcmp(c.layout->name, ctl) == 0) return &c;
    return nullptr;
}

HWND LumbraMnu::control(const char* ctl) const {
    const Control* c = find(ctl);
    return c != nullptr ? c->hwnd : nullptr;
}

std::string LumbraMnu::text(const char* ctl) const {
    const HWND c = control(ctl);
    if (c == nullptr) throw std::logic_error(std::string("no control ") + ctl);
    std::wstring text(static_cast<std::size_t>(::GetWindowTextLengthW(c)) + 1, L'\0');
    text.resize(
        static_cast<std::size_t>(::GetWindowTextW(c, text.data(), static_cast<int>(text.size()))));
    return platform::FromWide(text);
}

void LumbraMnu::setText(const char* ctl, const std::string& text) {
    const Control* c = find(ctl);
    if (c == nullptr) throw std::logic_error(std::string("no control ") + ctl);
    writing_ = true;
    ::SetWindowTextW(c->hwnd, platform::ToWide(text).c_str());
    writing_ = false;
    if (c->layout->kind == CtlKind::Panel) ::InvalidateRect(c->hwnd, nullptr, TRUE);
    if (c->layout->kind == CtlKind::TextBox) onCommand(::GetDlgCtrlID(c->hwnd), EN_CHANGE);
}

void LumbraMnu::fillList(const char* ctl, const std::vector<std::string>& entries) {
    const HWND list = control(ctl);
    ::SendMessageW(list, CB_RESETCONTENT, 0, 0);
    for (const std::string& e : entries)
        ::SendMessageW(list, CB_ADDSTRING, 0,
                       reinterpret_cast<LPARAM>(platform::ToWide(e).c_str()));
    // Setting the selection by message raises no notice: the program's filling is no choice.
    if (!entries.empty()) ::SendMessageW(list, CB_SETCURSEL, 0, 0);
}

int LumbraMnu::selected(const char* ctl) const {
    const LRESULT position = ::SendMessageW(control(ctl), CB_GETCURSEL, 0, 0);
    return position == CB_ERR ? -1 : static_cast<int>(position);
}

void LumbraMnu::setEnabled(const char* ctl, bool enabled) {
    if (const HWND c = control(ctl); c != nullptr) {
        ::EnableWindow(c, enabled ? TRUE : FALSE);
        return;
    }
    const int id = commandId(ctl);
    if (id == 0) throw std::logic_error(std::string("no control ") + ctl);
    ::EnableMenuItem(menu_, static_cast<UINT>(id),
                     MF_BYCOMMAND | static_cast<UINT>(enabled ? MF_ENABLED : MF_GRAYED));
}

void LumbraMnu::showPage(int n) {
    const HWND tabs = control("tbOpc");
    const int count = TabCtrl_GetItemCount(tabs);
    for (int i = 0; i < count; ++i) {
        TCITEMW item{};
        item.mask = TCIF_PARAM;
        TabCtrl_GetItem(tabs, i, &item);
        if (item.lParam == n) TabCtrl_SetCurSel(tabs, i);
    }
    page_ = n;
    // A page's controls belong to the main window: they are shown and hidden with their page.
    for (const Control& c : controls_)
        if (c.page >= 0) ::ShowWindow(c.hwnd, c.page == n ? SW_SHOWNA : SW_HIDE);
    // The frames leave their inside to whatever lies under them: all of it is painted again, so
    // nothing of the page that went stays inside the one that came.
    ::RedrawWindow(window_, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_ALLCHILDREN);
}

void LumbraMnu::retirePage(int n) {
    // A tab control cannot hide a tab: the tab goes, its controls stay hidden for good.
    const HWND tabs = control("tbOpc");
    for (int i = TabCtrl_GetItemCount(tabs) - 1; i >= 0; --i) {
        TCITEMW item{};
        item.mask = TCIF_PARAM;
        TabCtrl_GetItem(tabs, i, &item);
        if (item.lParam == n) TabCtrl_DeleteItem(tabs, i);
    }
    if (page_ == n) showPage(0);
}

void LumbraMnu::clearMessages() {
    ::SendMessageW(control("lbRes"), LB_RESETCONTENT, 0, 0);
}

void LumbraMnu::addMessage(const std::string& line) {
    const HWND list = control("lbRes");
    ::SendMessageW(list, LB_ADDSTRING, 0, reinterpret_cast<LPARAM>(platform::ToWide(line).c_str()));
    const auto count = static_cast<int>(::SendMessageW(list, LB_GETCOUNT, 0, 0));
    if (count > kMsgLines)
        ::SendMessageW(list, LB_SETTOPINDEX, static_cast<WPARAM>(count - kMsgLines), 0);
}

void LumbraMnu::closeWindow() {
    if (window_ != nullptr) ::SendMessageW(window_, WM_CLOSE, 0, 0);
}

void LumbraMnu::onClose() {
    if (!unloaded_) {
        unloaded_ = true;
        form.Form_Unload();
    }
    // Inside a handler (a cycle that yields, a box that waits) the window only hides: the handler
    // still speaks to its controls on its way out, and the window goes after it.
    if (handling_ > 0) {
        ::ShowWindow(window_, SW_HIDE);
        destroyPending_ = true;
        return;
    }
    ::DestroyWindow(window_);
}

}  // namespace lumbra
