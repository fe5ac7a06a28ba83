#pragma once
// The window's message boxes on Windows: MessageBoxW owned by the main window, with the box's icon
// and an OK button, and while a MsgBoxStopButton lives a second button with its caption. The
// hourglass is off while a box waits for the user. The end of the program hides the windows and
// ends the process.

#include <windows.h>

#include <string>

#include "platform/msg_box.h"

namespace lumbra::platform {

class WinMsgSink : public MsgSink {
  public:
    // The window the boxes belong to; nullptr (or a window not shown yet) for boxes of their own.
    void setOwner(HWND owner) { owner_ = owner; }

    // Titles and texts are Windows-1252 bytes.
    void show(const std::string& title, const std::string& text, MsgIcon icon) override;
    // Numbered files are already closed and the program-end hooks have run (EndProgram).
    [[noreturn]] void endProgram(int status) override;

  private:
    HWND owner_ = nullptr;
};

}  // namespace lumbra::platform
