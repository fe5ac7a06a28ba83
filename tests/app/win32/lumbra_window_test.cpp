// The Windows window under Wine, driven through its controls' messages: its layout against the
// documentation, what each button sends to a pseudo-terminal or a file, the converter, the drawer
// cycle stopped by its button or by closing the window, and the real message boxes with their
// stop button and the hourglass.

#include <functional>
#include <vector>

#include "app/LumbraGb.h"
#include "channels/PgmFic.h"
#include "platform/msg_box.h"
#include "platform/win32/win_busy_pointer.h"
#include "platform/win32/win_msg_box.h"
#include "tests/app/layout_table.h"
#include "tests/app/win32/window_test_driver.h"

namespace lumbra::test {
namespace {

// Runs an action from the window's events once the drawer box has shown its k-th command, that
// is after k - 1 sends of the cycle: the box's procedure posts it, the cycle's next yield runs it.
class WhenShown {
  public:
    WhenShown(HWND box, int k, std::function<void()> action) : box_(box) {
        current = this;
        k_ = k;
        action_ = std::move(action);
        edit_ = reinterpret_cast<WNDPROC>(
            ::SetWindowLongPtrW(box, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&Proc)));
    }
    ~WhenShown() {
        ::SetWindowLongPtrW(box_, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(edit_));
        current = nullptr;
    }
    WhenShown(const WhenShown&) = delete;
    WhenShown& operator=(const WhenShown&) = delete;

  private:
    static LRESULT CALLBACK Proc(HWND box, UINT msg, WPARAM wParam, LPARAM lParam) {
        WhenShown* self = current;
        const LRESULT result = ::CallWindowProcW(self->edit_, box, msg, wParam, lParam);
        if (msg == WM_SETTEXT && ++self->shown_ == self->k_) self->action_();
        return result;
    }

    static inline WhenShown* current = nullptr;
    HWND box_;
    WNDPROC edit_ = nullptr;
    int k_ = 0;
    int shown_ = 0;
    std::function<void()> action_;
};

bool MenuGrayed(HMENU menu, int id) {
    return (::GetMenuState(menu, static_cast<UINT>(id), MF_BYCOMMAND) & MF_GRAYED) != 0;
}

RECT WindowRect(HWND hwnd) {
    RECT r{};
    ::GetWindowRect(hwnd, &r);
    return r;
}

TEST_F(WindowTest, everyControlLiesWhereTheLayoutPutsItAt96Dpi) {
    ASSERT_EQ(WindowDpi(w->hwnd()), 96) << "the prefix must be at 96 dots per inch";
    RECT client{};
    ::GetClientRect(w->hwnd(), &client);
    EXPECT_EQ(client.right, kClientTwips[0] / 15);
    EXPECT_EQ(client.bottom, kClientTwips[1] / 15);
    wchar_t title[64] = {};
    ::GetWindowTextW(w->hwnd(), title, 64);
    EXPECT_EQ(std::wstring(title), L"Configura\u00E7\u00E3o para POS");
    for (const ExpectedRect& e : kLayoutTwips) {
        SCOPED_TRACE(e.name);
        const CtlLayout* c = FindControl(e.name);
        ASSERT_NE(c, nullptr);
        const RECT r = WindowRect(control(e.name));
        // The origin of the layout's parent: the client area, the whole tab control, or a frame.
        POINT origin{0, 0};
        ::ClientToScreen(w->hwnd(), &origin);
        if (c->parent[0] != '\0') {
            const RECT p = WindowRect(control(c->parent[0] == '#' ? "tbOpc" : c->parent));
            origin = {p.left, p.top};
        }
        EXPECT_EQ(r.left - origin.x, e.left / 15);
        EXPECT_EQ(r.top - origin.y, e.top / 15);
        EXPECT_EQ(r.right - r.left, e.width / 15);
        EXPECT_EQ(r.bottom - r.top, e.height / 15);
    }
    // The spare pages have no tab; the message list stays hidden.
    EXPECT_EQ(TabCtrl_GetItemCount(control("tbOpc")), 3);
    EXPECT_FALSE(::IsWindowVisible(control("lbRes")));
    EXPECT_EQ(::GetWindowTextLengthW(control("laTit")), 0);
}

TEST_F(WindowTest, everyButtonSendsTheChosenRowToItsDevice) {
    if (!HavePorts()) GTEST_SKIP() << "COM1 and COM2 are not on pseudo-terminals";
    EXPECT_EQ(count("cbLigPor"), 3);
    EXPECT_EQ(text("txGavAbr"), "chr$(27)+\"p\"+chr$(0)+chr$(25)+chr$(250)");
    for (const SendCase& s : kSendCases) {
        SCOPED_TRACE(std::string(s.button) + " to " + s.device);
        if (s.list != nullptr) choose(s.list, s.position);
        if (s.box != nullptr) type(s.box, s.typed);
        click(s.button);
        EXPECT_EQ(received(s.device, s.bytes.size()), s.bytes);
    }
    // Choosing a mode shows its command.
    EXPECT_EQ(text("txGavAbr"), "\"A\"+chr$(13,10)");
    EXPECT_TRUE(boxes.boxes().empty());
}

// A typed character Windows-1252 lacks is refused; the rest goes in.
TEST_F(WindowTest, theBoxesRefuseWhatWindows1252CannotHold) {
    type("txLigTst", "");
    for (const wchar_t c : std::wstring(L"a\u2192\u20AC\u00E7"))
        ::SendMessageW(control("txLigTst"), WM_CHAR, c, 1);
    EXPECT_EQ(text("txLigTst"), "a\x80\xE7");
}

TEST_F(WindowTest, typingInOneBoxShowsTheConversionInTheOther) {
    for (const ConversionCase& c : kConversionCases) {
        SCOPED_TRACE(std::string(c.box) + " " + c.typed);
        type(c.box, c.typed);
        EXPECT_EQ(text(c.other), c.shown);
        // No conversion came back into the box being edited.
        EXPECT_EQ(text(c.box), c.typed);
    }
}

TEST_F(WindowTest, theMessageListKeepsTheNewestLinesInView) {
    w->form.LumbraMsgJun(Variant("Liga\xE7\xE3o"));
    for (std::int32_t i = 2; i <= 40; ++i)
        w->form.LumbraMsgJun(Variant(i));
    const HWND list = control("lbRes");
    EXPECT_EQ(::SendMessageW(list, LB_GETCOUNT, 0, 0), 40);
    EXPECT_EQ(::SendMessageW(list, LB_GETTOPINDEX, 0, 0), 40 - 16);
    wchar_t first[32] = {};
    ::SendMessageW(list, LB_GETTEXT, 0, reinterpret_cast<LPARAM>(first));
    EXPECT_EQ(std::wstring(first), L"Liga\u00E7\u00E3o");
}

// Pressed again from inside the cycle ("Parar"), the button stops it before its next send; closing
// the window stops it the same way, and the window goes once the cycle has returned. While it
// runs "Ler configuração" is off, and refused if it comes all the same.
TEST_F(WindowTest, theCycleStopsBeforeItsNextSendByItsButtonOrByClosing) {
    if (!HavePorts()) GTEST_SKIP() << "COM1 is not on a pseudo-terminal";
    for (const bool closing : {false, true}) {
        SCOPED_TRACE(closing ? "closing" : "Parar");
        if (closing) {
            w.reset();
            ResetProgram();
            dir.write("Lumbra.par", ParFile(WindowParLines(dir.path(), '\\')));
            SetCommandLine({"-FP", dir.file("Lumbra.par")});
            start();
        }
        dir.write("Lumbra.par", ParFile({"#GAV Gaveta", "Novo [N]=1", "##"}));
        choose("cbGavAbr", 2);
        std::string caption;
        bool grayed = false;
        {
            const WhenShown third(control("txGavAbr"), 3, [&] {
                caption = text("cmAbrCic");
                grayed = MenuGrayed(w->menu(), w->commandId("mnuLerCfg"));
                menu("mnuLerCfg");
                if (closing)
                    ::PostMessageW(w->hwnd(), WM_CLOSE, 0, 0);
                else
                    ::PostMessageW(control("cmAbrCic"), BM_CLICK, 0, 0);
            });
            click("cmAbrCic");
        }
        EXPECT_EQ(caption, "Parar");
        EXPECT_TRUE(grayed);
        EXPECT_EQ(received("COM1", 10), std::string("\x1Bp\0\n\n\x1Bp\x01\n\n", 10));
        EXPECT_EQ(Gb().gavTab.at(3).vtx, kCycleCommand);
        if (closing) {
            EXPECT_TRUE(w->unloaded());
            EXPECT_EQ(w->hwnd(), nullptr);
            EXPECT_EQ(CanMax(), 0);
            continue;
        }
        EXPECT_EQ(text("cmAbrCic"), "Ciclo");
        EXPECT_FALSE(MenuGrayed(w->menu(), w->commandId("mnuLerCfg")));
        EXPECT_EQ(count("cbGavAbr"), 3);
        EXPECT_EQ(text("txGavAbr"), "chr$(27)+\"p\"+chr$(1)+chr$(10)+chr$(10)");
    }
    EXPECT_TRUE(boxes.boxes().empty());
}

// The boxes of the window itself. A missing device during the cycle raises a box that offers
// "Parar ciclo", which stops the cycle at once; outside a cycle a box has OK alone. The hourglass
// of "Abrir" is on while it works and off while each box waits.
TEST_F(WindowTest, theBoxesOfTheCycleOfferItsStopAndTheHourglassWaitsOutside) {
    struct Watch : platform::WinMsgSink {
        std::vector<std::string> texts;
        std::vector<bool> busy;
        void show(const std::string& title, const std::string& body,
                  platform::MsgIcon icon) override {
            texts.push_back(body);
            busy.push_back(::GetCursor() == ::LoadCursorW(nullptr, IDC_WAIT));
            WinMsgSink::show(title, body, icon);
        }
    } watch;
    watch.setOwner(w->hwnd());
    platform::SetMsgSink(&watch);
    struct Seen {
        std::vector<std::string> stop;
        std::vector<bool> busy;
    };
    static Seen seen;
    seen = {};
    // Inside the box's own loop: note what it offers, then choose the stop where there is one.
    const auto answer = [](HWND, UINT, UINT_PTR, DWORD) {
        HWND box = nullptr;
        ::EnumThreadWindows(
            ::GetCurrentThreadId(),
            [](HWND h, LPARAM found) {
                wchar_t cls[16] = {};
                ::GetClassNameW(h, cls, 16);
                if (std::wstring(cls) == L"#32770" && ::IsWindowVisible(h))
                    *reinterpret_cast<HWND*>(found) = h;
                return TRUE;
            },
            reinterpret_cast<LPARAM>(&box));
        if (box == nullptr) return;
        wchar_t caption[32] = {};
        const HWND cancel = ::GetDlgItem(box, IDCANCEL);
        if (cancel != nullptr) ::GetWindowTextW(cancel, caption, 32);
        seen.stop.push_back(platform::FromWide(caption));
        seen.busy.push_back(::GetCursor() == ::LoadCursorW(nullptr, IDC_WAIT));
        ::PostMessageW(box, WM_COMMAND, cancel != nullptr ? IDCANCEL : IDOK, 0);
    };
    const UINT_PTR timer = ::SetTimer(nullptr, 0, 20, answer);
    choose("cbLigPor", 2);
    choose("cbGavAbr", 2);
    click("cmAbrCic");
    EXPECT_EQ(watch.texts.size(), 1u);
    EXPECT_EQ(seen.stop, std::vector<std::string>{"Parar ciclo"});
    EXPECT_EQ(Gb().gavTab.at(3).vtx, kCycleCommand);
    EXPECT_EQ(text("cmAbrCic"), "Ciclo");

    seen = {};
    watch.busy.clear();
    click("cmGavAbr");
    ::KillTimer(nullptr, timer);
    platform::SetMsgSink(&boxes);
    EXPECT_EQ(seen.stop, std::vector<std::string>(3, ""));
    EXPECT_EQ(watch.busy, std::vector<bool>(3, true));
    EXPECT_EQ(seen.busy, std::vector<bool>(3, false));
    EXPECT_FALSE(platform::BusyPointerShown());
    ASSERT_FALSE(watch.texts.empty());
    EXPECT_TRUE(watch.texts[0].starts_with("Funcao: Abrir|")) << watch.texts[0];
}

}  // namespace
}  // namespace lumbra::test
