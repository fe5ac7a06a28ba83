#pragma once
// What the main window's events need of a window, whatever toolkit draws it. Controls are named as
// in the layout (window_layout.h); texts are Windows-1252 and become the toolkit's strings inside
// the implementation. An implementation only shows what it is told and forwards its controls'
// events to LumbraMnuForm.

#include <string>
#include <vector>

namespace lumbra {

class LumbraMnuView {
  public:
    virtual ~LumbraMnuView() = default;

    // The text of a text box.
    virtual std::string text(const char* ctl) const = 0;
    // Sets the text of a text box or label, or the caption of a button. A text box raises its
    // change event as an edit would (frmAct tells the handlers apart).
    virtual void setText(const char* ctl, const std::string& text) = 0;
    // Replaces the entries of a drop-down list and selects the first when there is one, without
    // raising the list's events: the program's own filling is not a choice of the user.
    virtual void fillList(const char* ctl, const std::vector<std::string>& entries) = 0;
    // The selected position of a drop-down list, 0 for the first entry, -1 when none is selected.
    virtual int selected(const char* ctl) const = 0;
    // Enables or disables a control or a menu entry.
    virtual void setEnabled(const char* ctl, bool enabled) = 0;

    // Brings page n (0 first) of the tab control to the front.
    virtual void showPage(int n) = 0;
    // Takes page n out of use: its tab is neither shown nor reachable.
    virtual void retirePage(int n) = 0;

    // The message list: emptied, or one line appended with the newest lines kept in view.
    virtual void clearMessages() = 0;
    virtual void addMessage(const std::string& line) = 0;

    // Closes the window the way its frame's close button does; the window calls
    // LumbraMnuForm::Form_Unload once on its way out.
    virtual void closeWindow() = 0;
};

}  // namespace lumbra
