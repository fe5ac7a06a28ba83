#pragma once
// Drives the Windows window as a technician does, through the messages its controls send: a tab
// clicked, a list entry chosen, a box's text replaced, a button or a menu entry pressed. The
// program starts as main starts it, on a parameter file written to a real folder.

#include <gtest/gtest.h>
#include <windows.h>
// After windows.h, which it builds on.
#include <commctrl.h>

#include <chrono>
#include <fstream>
#include <memory>
#include <string>
#include <thread>

#include "app/win32/LumbraMnu.h"
#include "app/window_layout.h"
#include "platform/win32/wide_text.h"
#include "tests/app/app_fixture.h"
#include "tests/app/window_cases.h"

namespace lumbra::test {

// The page a control lies on, through its frames; -1 for none.
inline int PageOfControl(const char* name) {
    const CtlLayout* c = FindControl(name);
    while (c != nullptr && c->parent[0] != '#' && c->parent[0] != '\0')
        c = FindControl(c->parent);
    return c != nullptr && c->parent[0] == '#' ? c->parent[1] - '0' : -1;
}

// What reached a COM port of the prefix: the host side copies its pseudo-terminal into a file of
// the folder LUMBRA_TEST_PORTS names ("received-COM1": a file called COM1 or COM1.anything would be
// the port itself on Windows). Each call returns what arrived since the last one.
class PortLog {
  public:
    // What arrived before it was made is not news.
    explicit PortLog(std::string file) : file_(std::move(file)), seen_(read().size()) {}
    // Waits (at most a few seconds) for count new bytes, then returns every new byte.
    std::string next(std::size_t count) {
        std::string all;
        for (int i = 0; i < 500; ++i) {
            all = read();
            if (all.size() >= seen_ + count) break;
            std::this_thread::sleep_for(std::chrono::milliseconds(10));
        }
        const std::string fresh = all.size() > seen_ ? all.substr(seen_) : std::string();
        seen_ = all.size();
        return fresh;
    }

  private:
    std::string read() const {
        std::ifstream in(file_, std::ios::binary);
        return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
    }
    std::string file_;
    std::size_t seen_;
};

class WindowTest : public ::testing::Test {
  protected:
    void SetUp() override {
        ResetProgram();
        dir.write("Lumbra.par", ParFile(WindowParLines(dir.path(), '\\')));
        SetCommandLine({"-FP", dir.file("Lumbra.par")});
        start();
    }
    void TearDown() override {
        w.reset();
        ResetProgram();
    }

    // The program's start as main does it: the window, Form_Load, then shown.
    void start() {
        w = std::make_unique<LumbraMnu>();
        w->Form_Load();
        w->show(SW_SHOWNORMAL);
    }

    HWND control(const char* name) const { return w->control(name); }
    void send(UINT msg, WPARAM wParam, LPARAM lParam) const {
        ::SendMessageW(w->hwnd(), msg, wParam, lParam);
    }

    // Clicks the tab of the page the control lies on.
    void front(const char* name) const {
        const int page = PageOfControl(name);
        if (page < 0) return;
        const HWND tabs = control("tbOpc");
        TabCtrl_SetCurSel(tabs, page);
        NMHDR note{tabs, static_cast<UINT_PTR>(::GetDlgCtrlID(tabs)), TCN_SELCHANGE};
        send(WM_NOTIFY, note.idFrom, reinterpret_cast<LPARAM>(&note));
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
    std::string text(const char* ctl) const { return w->text(ctl); }
    int count(const char* list) const {
        return static_cast<int>(::SendMessageW(control(list), CB_GETCOUNT, 0, 0));
    }

    // The bytes a device of the cases received since the last look: a COM port of the prefix
    // or a file of the folder.
    std::string received(const std::string& device, std::size_t count) {
        if (!device.starts_with("COM")) return dir.read(device);
        return (device == "COM1" ? com1 : com2).next(count);
    }
    static std::string PortFile(const char* name) {
        const char* folder = std::getenv("LUMBRA_TEST_PORTS");
        return std::string(folder != nullptr ? folder : "") + "\\received-" + name;
    }
    static bool HavePorts() { return std::getenv("LUMBRA_TEST_PORTS") != nullptr; }

    TempDir dir;
    RecordingMsgSink boxes;
    std::unique_ptr<LumbraMnu> w;
    PortLog com1{PortFile("COM1")};
    PortLog com2{PortFile("COM2")};
};

}  // namespace lumbra::test
