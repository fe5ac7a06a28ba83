// The Windows window under Wine, driven as a technician does through its controls' messages, on a
// parameter file in a real folder. COM1 and COM2 are pseudo-terminals of the host
// (run_window_test.sh): what reaches COMn lands in "received-COMn" of the folder LUMBRA_TEST_PORTS
// names (a file called COM1 would be the port itself on Windows), and while "hold-COMn" is there
// COMn takes nothing.

#include <gtest/gtest.h>
#include <windows.h>
// After windows.h, which it builds on.
#include <commctrl.h>

#include <chrono>
#include <fstream>
#include <functional>
#include <memory>
#include <string>
#include <thread>
#include <vector>

#include "app/win32/LumbraMnu.h"
#include "app/window_layout.h"
#include "channels/serial_port_control.h"
#include "platform/win32/wide_text.h"
#include "platform/win32/win_busy_pointer.h"
#include "platform/win32/win_msg_box.h"
#include "platform/write_stall.h"
#include "tests/app/app_fixture.h"
#include "tests/app/layout_table.h"
#include "tests/app/window_cases.h"

namespace lumbra::test {
namespace {

using std::chrono::milliseconds;

// The page a control lies on, through its frames; -1 for none.
int PageOfControl(const char* name) {
    const CtlLayout* c = FindControl(name);
    while (c != nullptr && c->parent[0] != '#' && c->parent[0] != '\0')
        c = FindControl(c->parent);
    return c != nullptr && c->parent[0] == '#' ? c->parent[1] - '0' : -1;
}

std::string PortFile(const std::string& name) {
    const char* folder = std::getenv("LUMBRA_TEST_PORTS");
    return std::string(folder != nullptr ? folder : "") + "\\" + name;
}
bool HavePorts() {
    return std::getenv("LUMBRA_TEST_PORTS") != nullptr;
}

// What reached a COM port: each call waits (a few seconds at most) for count new bytes, then
// returns every byte that came since the last call.
struct PortLog {
    explicit PortLog(const std::string& port) : file(PortFile("received-" + port)) {
        seen = read().size();
    }
    std::string read() const {
        std::ifstream in(file, std::ios::binary);
        return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
    }
    std::string next(std::size_t count) {
        std::string all = read();
        for (int i = 0; i < 500 && all.size() < seen + count; ++i) {
            std::this_thread::sleep_for(milliseconds(10));
            all = read();
        }
        const std::string fresh = all.substr(std::min(seen, all.size()));
        seen = all.size();
        return fresh;
    }
    const std::string file;
    std::size_t seen = 0;
};

// Runs an action from the window's events once the drawer box has shown its k-th command, that
// is after k - 1 sends of the cycle: the box's procedure posts it, the cycle's next yield runs it.
struct WhenShown {
    WhenShown(HWND edited, int k, std::function<void()> action) : box(edited) {
        left = k;
        act = std::move(action);
        edit = reinterpret_cast<WNDPROC>(
            ::SetWindowLongPtrW(box, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&Proc)));
    }
    ~WhenShown() { ::SetWindowLongPtrW(box, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(edit)); }
    static LRESULT CALLBACK Proc(HWND h, UINT msg, WPARAM wParam, LPARAM lParam) {
        const LRESULT result = ::CallWindowProcW(edit, h, msg, wParam, lParam);
        if (msg == WM_SETTEXT && --left == 0) act();
        return result;
    }
    HWND box;
    static inline WNDPROC edit = nullptr;
    static inline int left = 0;
    static inline std::function<void()> act;
};

RECT WindowRect(HWND hwnd) {
    RECT r{};
    ::GetWindowRect(hwnd, &r);
    return r;
}

class WindowTest : public ::testing::Test {
  protected:
    void SetUp() override { start(WindowParLines(dir.path(), '\\')); }
    void TearDown() override {
        w.reset();
        ResetProgram();
    }
    // The program's start as main does it: the window, Form_Load, then shown.
    void start(const std::vector<std::string>& lines) {
        w.reset();
        ResetProgram();
        dir.write("Lumbra.par", ParFile(lines));
        SetCommandLine({"-FP", dir.file("Lumbra.par")});
        w = std::make_unique<LumbraMnu>();
        w->Form_Load();
        w->show(SW_SHOWNORMAL);
    }

    HWND control(const char* name) const { return w->control(name); }
    void send(UINT msg, WPARAM wParam, LPARAM lParam) const {
        ::SendMessageW(w->hwnd(), msg, wParam, lParam);
    }
    // Clicks the tab of a page (of the page the control lies on).
    void showTab(int page) const {
        const HWND tabs = control("tbOpc");
        TabCtrl_SetCurSel(tabs, page);
        NMHDR note{tabs, static_cast<UINT_PTR>(::GetDlgCtrlID(tabs)), TCN_SELCHANGE};
        send(WM_NOTIFY, note.idFrom, reinterpret_cast<LPARAM>(&note));
    }
    void front(const char* name) const {
        if (PageOfControl(name) >= 0) showTab(PageOfControl(name));
    }
    void click(const char* button) const {
        front(button);
        ::SendMessageW(control(button), BM_CLICK, 0, 0);
    }
    // Chooses an entry of a drop-down list: the selection moves, the list tells its window.
    void choose(const char* list, int position) const {
        front(list);
        ::SendMessageW(control(list), CB_SETCURSEL, static_cast<WPARAM>(position), 0);
        send(WM_COMMAND, MAKEWPARAM(::GetDlgCtrlID(control(list)), CBN_SELCHANGE),
             reinterpret_cast<LPARAM>(control(list)));
    }
    // Replaces a box's text (Windows-1252) as an edit does, with its change notice.
    void type(const char* box, const std::string& text) const {
        front(box);
        ::SendMessageW(control(box), WM_SETTEXT, 0,
                       reinterpret_cast<LPARAM>(platform::ToWide(text).c_str()));
    }
    void menu(const char* entry) const { send(WM_COMMAND, MAKEWPARAM(w->commandId(entry), 0), 0); }
    bool grayed(const char* entry) const {
        return (::GetMenuState(w->menu(), static_cast<UINT>(w->commandId(entry)), MF_BYCOMMAND) &
                MF_GRAYED) != 0;
    }
    std::string text(const char* ctl) const { return w->text(ctl); }
    int count(const char* list) const {
        return static_cast<int>(::SendMessageW(control(list), CB_GETCOUNT, 0, 0));
    }
    // The bytes a device of the cases received since the last look: a port or a file of the folder.
    std::string received(const std::string& device, std::size_t count) {
        if (!device.starts_with("COM")) return dir.read(device);
        return (device == "COM1" ? com1 : com2).next(count);
    }

    TempDir dir;
    RecordingMsgSink boxes;
    std::unique_ptr<LumbraMnu> w;
    PortLog com1{"COM1"};
    PortLog com2{"COM2"};
};

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
        // Only the text boxes and the message list have a sunken edge inside their rectangle.
        RECT inner{};
        ::GetClientRect(control(e.name), &inner);
        const std::string_view name = e.name;
        EXPECT_EQ(inner.right < r.right - r.left, name.starts_with("tx") || name == "lbRes");
    }
    // Each tab shows its own page's controls alone.
    for (const int page : {1, 2, 0}) {
        showTab(page);
        for (const ExpectedRect& e : kLayoutTwips) {
            if (PageOfControl(e.name) < 0) continue;
            EXPECT_EQ(::IsWindowVisible(control(e.name)) != 0, PageOfControl(e.name) == page)
                << e.name << " on tab " << page;
        }
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

// A typed character Windows-1252 lacks is refused; the rest goes in. Typing in one converter box
// shows the conversion in the other, and none comes back into the box being edited.
TEST_F(WindowTest, theBoxesRefuseWhatWindows1252LacksAndTheConverterConverts) {
    type("txLigTst", "");
    for (const wchar_t c : std::wstring(L"a\u2192\u20AC\u00E7"))
        ::SendMessageW(control("txLigTst"), WM_CHAR, c, 1);
    EXPECT_EQ(text("txLigTst"), "a\x80\xE7");
    for (const ConversionCase& c : kConversionCases) {
        SCOPED_TRACE(std::string(c.box) + " " + c.typed);
        type(c.box, c.typed);
        EXPECT_EQ(text(c.other), c.shown);
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

// "Ler configuração" reads the file again (here one drawer mode fewer); "Fim" closes the
// window, and its fonts go with it.
TEST_F(WindowTest, theMenuReadsTheFileAgainAndEnds) {
    std::vector<std::string> lines = WindowParLines(dir.path(), '\\');
    lines.erase(lines.begin() + 7);
    dir.write("Lumbra.par", ParFile(lines));
    menu("mnuLerCfg");
    EXPECT_EQ(count("cbGavAbr"), 2);
    const auto font = reinterpret_cast<HGDIOBJ>(::SendMessageW(control("laTit"), WM_GETFONT, 0, 0));
    menu("mnuFim");
    EXPECT_TRUE(w->unloaded());
    EXPECT_EQ(w->hwnd(), nullptr);
    w.reset();
    EXPECT_EQ(::GetObjectType(font), 0u) << "the window's fonts outlive it";
}

// Pressed again from inside the cycle ("Parar"), the button stops it before its next send; closing
// the window stops it the same way, and the window goes once the cycle has returned. While it
// runs "Ler configuração" is off, and refused if it comes all the same.
TEST_F(WindowTest, theCycleStopsBeforeItsNextSendByItsButtonOrByClosing) {
    if (!HavePorts()) GTEST_SKIP() << "COM1 is not on a pseudo-terminal";
    for (const bool closing : {false, true}) {
        SCOPED_TRACE(closing ? "closing" : "Parar");
        if (closing) start(WindowParLines(dir.path(), '\\'));
        dir.write("Lumbra.par", ParFile({"#GAV Gaveta", "Novo [N]=1", "##"}));
        choose("cbGavAbr", 2);
        std::string caption;
        bool off = false;
        {
            const WhenShown third(control("txGavAbr"), 3, [&] {
                caption = text("cmAbrCic");
                off = grayed("mnuLerCfg");
                menu("mnuLerCfg");
                ::PostMessageW(closing ? w->hwnd() : control("cmAbrCic"),
                               closing ? WM_CLOSE : BM_CLICK, 0, 0);
            });
            click("cmAbrCic");
        }
        EXPECT_EQ(caption, "Parar");
        EXPECT_TRUE(off);
        EXPECT_EQ(received("COM1", 10), std::string("\x1Bp\0\n\n\x1Bp\x01\n\n", 10));
        EXPECT_EQ(Gb().gavTab.at(3).vtx, kCycleCommand);
        if (closing) {
            EXPECT_TRUE(w->unloaded());
            EXPECT_EQ(w->hwnd(), nullptr);
            EXPECT_EQ(CanMax(), 0);
            continue;
        }
        EXPECT_EQ(text("cmAbrCic"), "Ciclo");
        EXPECT_FALSE(grayed("mnuLerCfg"));
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
            busy.push_back(::GetCursor() == ::LoadCursorW(nullptr, IDC_WAIT) &&
                           platform::BusyPointerShown());
            WinMsgSink::show(title, body, icon);
        }
    } watch;
    watch.setOwner(w->hwnd());
    platform::SetMsgSink(&watch);
    // What each box offered, and whether the hourglass showed while it waited.
    static std::vector<std::string> stop;
    static std::vector<bool> busy;
    stop.clear();
    // Inside the box's own loop: note what it offers, then choose the stop where there is one.
    const auto answer = [](HWND, UINT, UINT_PTR, DWORD) {
        const HWND box = ::FindWindowW(L"#32770", nullptr);
        if (box == nullptr || !::IsWindowVisible(box)) return;
        wchar_t caption[32] = {};
        const HWND cancel = ::GetDlgItem(box, IDCANCEL);
        if (cancel != nullptr) ::GetWindowTextW(cancel, caption, 32);
        stop.push_back(platform::FromWide(caption));
        busy.push_back(::GetCursor() == ::LoadCursorW(nullptr, IDC_WAIT));
        ::PostMessageW(box, WM_COMMAND, cancel != nullptr ? IDCANCEL : IDOK, 0);
    };
    const UINT_PTR timer = ::SetTimer(nullptr, 0, 20, answer);
    choose("cbLigPor", 2);
    choose("cbGavAbr", 2);
    click("cmAbrCic");
    EXPECT_EQ(watch.texts.size(), 1u);
    EXPECT_EQ(stop, std::vector<std::string>{"Parar ciclo"});
    EXPECT_EQ(Gb().gavTab.at(3).vtx, kCycleCommand);
    EXPECT_EQ(text("cmAbrCic"), "Ciclo");

    stop.clear();
    busy.clear();
    watch.busy.clear();
    click("cmGavAbr");
    ::KillTimer(nullptr, timer);
    platform::SetMsgSink(&boxes);
    EXPECT_EQ(stop, std::vector<std::string>(3, ""));
    EXPECT_EQ(watch.busy, std::vector<bool>(3, true));
    EXPECT_EQ(busy, std::vector<bool>(3, false));
    EXPECT_FALSE(platform::BusyPointerShown());
    ASSERT_FALSE(watch.texts.empty());
    EXPECT_TRUE(watch.texts[0].starts_with("Funcao: Abrir|")) << watch.texts[0];
}

// The line as the settings give it, and the port's own bound on a write: the stall limit plus the
// time each character takes on the line (stop bits counted as two), rounded up. A pseudo-terminal
// keeps neither parity nor 7 data bits, so only the speed and stop bits are read back.
TEST(SerialLineTest, theLineTakesTheSettingsAndBoundsWritesByTheCharacterTime) {
    if (!HavePorts()) GTEST_SKIP() << "COM1 is not on a pseudo-terminal";
    const struct {
        const char* settings;
        DWORD baud, stop, perChar;
    } cases[] = {{"9600,n,8,1", 9600, ONESTOPBIT, 2},
                 {"1200,e,7,2", 1200, TWOSTOPBITS, 10},
                 {"300,o,8,2", 300, TWOSTOPBITS, 40},
                 {"19200,n,7,1", 19200, ONESTOPBIT, 1}};
    platform::SetWriteStallLimit(milliseconds(1234));
    SerialPortControl port;
    for (const auto& c : cases) {
        SCOPED_TRACE(c.settings);
        ASSERT_TRUE(port.setSettings(c.settings) && port.setPortOpen(true)) << port.errorText();
        const auto handle = reinterpret_cast<HANDLE>(port.nativeHandle());
        DCB dcb{};
        dcb.DCBlength = sizeof dcb;
        COMMTIMEOUTS t{};
        ASSERT_TRUE(::GetCommState(handle, &dcb) && ::GetCommTimeouts(handle, &t));
        EXPECT_EQ(std::vector<DWORD>({dcb.BaudRate, dcb.StopBits, t.ReadIntervalTimeout,
                                      t.WriteTotalTimeoutMultiplier, t.WriteTotalTimeoutConstant}),
                  std::vector<DWORD>({c.baud, c.stop, MAXDWORD, c.perChar, 1234}));
        EXPECT_TRUE(port.setPortOpen(false));
    }
    platform::SetWriteStallLimit({});
}

// A device that takes nothing for a while is waited for, however often the write waits; one that
// takes nothing for the stall limit fails the write, and the port works on afterwards.
TEST(SerialLineTest, aSlowDeviceIsWaitedForAndAStalledOneFailsTheWrite) {
    if (!HavePorts()) GTEST_SKIP() << "COM2 is not on a pseudo-terminal";
    const std::string hold = PortFile("hold-COM2");
    const std::string bytes(256 * 1024, 'x');
    PortLog log("COM2");
    SerialPortControl port;
    ASSERT_TRUE(port.setCommPort(2) && port.setSettings("115200,n,8,1") && port.setPortOpen(true))
        << port.errorText();
    for (const bool slow : {true, false}) {
        platform::SetWriteStallLimit(milliseconds(slow ? 5000 : 300));
        std::ofstream(hold).put('x');
        std::thread release([&] {
            if (!slow) return;
            std::this_thread::sleep_for(milliseconds(400));
            ::DeleteFileA(hold.c_str());
        });
        EXPECT_EQ(port.output(bytes), slow) << port.errorText();
        release.join();
        ::DeleteFileA(hold.c_str());
        if (slow) {
            EXPECT_EQ(log.next(bytes.size()).size(), bytes.size());
        }
    }
    EXPECT_TRUE(port.errorText().find(" n\xE3o aceitou nenhum byte") != std::string::npos)
        << port.errorText();
    EXPECT_TRUE(port.output("end")) << port.errorText();
    platform::SetWriteStallLimit({});
}

}  // namespace
}  // namespace lumbra::test
