#pragma once
// The program's only window on Windows, built from the layout table with the Windows API and its
// common controls. Its controls' events go to LumbraMnuForm, which decides what they do and tells
// the window what to show through the LumbraMnuView it implements.

#include <windows.h>

#include <string>
#include <vector>

#include "app/LumbraMnuForm.h"
#include "app/LumbraMnuView.h"
#include "app/win32/win_fonts.h"

namespace lumbra {

struct CtlLayout;

class LumbraMnu : public LumbraMnuView {
  public:
    // Creates the window and its controls, hidden.
    LumbraMnu();
    ~LumbraMnu() override;
    LumbraMnu(const LumbraMnu&) = delete;
    LumbraMnu& operator=(const LumbraMnu&) = delete;

    LumbraMnuForm form{*this};

    // The start sequence (LumbraMnuForm::Form_Load); runs before the window is shown.
    void Form_Load() { form.Form_Load(); }
    void show(int how);
    // The program's window ends the message loop when it goes; a test's does not.
    void quitOnDestroy() { quitOnDestroy_ = true; }
    // Runs the window's messages until the program's end; its exit status.
    static int RunMessageLoop(HWND window);

    // nullptr once destroyed.
    HWND hwnd() const { return window_; }
    // A control by its layout name; nullptr when there is none.
    HWND control(const char* ctl) const;
    // The command identifier of a control or a menu entry; 0 when there is none.
    int commandId(const char* ctl) const;
    HMENU menu() const { return menu_; }
    // The page shown now, 0 first.
    int currentPage() const { return page_; }
    // True once Form_Unload has run.
    bool unloaded() const { return unloaded_; }

    // LumbraMnuView.
    std::string text(const char* ctl) const override;
    void setText(const char* ctl, const std::string& text) override;
    void fillList(const char* ctl, const std::vector<std::string>& entries) override;
    int selected(const char* ctl) const override;
    void setEnabled(const char* ctl, bool enabled) override;
    void showPage(int n) override;
    void retirePage(int n) override;
    void clearMessages() override;
    void addMessage(const std::string& line) override;
    void closeWindow() override;

  private:
    struct Control {
        const CtlLayout* layout;
        HWND hwnd;
        // The tab-control page it sits on, -1 for none.
        int page;
    };

    static LRESULT CALLBACK WindowProc(HWND hwnd, UINT msg, WPARAM wParam, LPARAM lParam);
    LRESULT handle(UINT msg, WPARAM wParam, LPARAM lParam);
    void createControls();
    void createMenu();
    // Places every control and sizes the window for dpi dots per inch.
    void layOut(int dpi);
    void onCommand(int id, int code);
    void onClose();
    const Control* find(const char* ctl) const;

    HWND window_ = nullptr;
    HMENU menu_ = nullptr;
    WinFonts fonts_;
    int dpi_ = 96;
    std::vector<Control> controls_;
    int page_ = 0;
    bool quitOnDestroy_ = false;
    bool unloaded_ = false;
    // Handlers under way (a cycle yields to events inside one): the window is destroyed only when
    // the outermost has returned, so no handler finds its window gone under it.
    int handling_ = 0;
    bool destroyPending_ = false;
    // Set while the program writes a text box, whose own change notice then stays unheard: the
    // handler is called once, by setText.
    bool writing_ = false;
};

}  // namespace lumbra
