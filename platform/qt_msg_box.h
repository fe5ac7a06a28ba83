#pragma once
// The window's message boxes: a modal QMessageBox with the box's icon and an OK button, and the end
// of the program that closes the windows before the process ends.

#include <functional>
#include <string>

#include "platform/msg_box.h"

namespace lumbra::platform {

class QtMsgSink : public MsgSink {
  public:
    // Titles and texts are Windows-1252 bytes. Without a running QApplication, or once a stop
    // signal has come (stop_signals.h), the box goes to standard error instead.
    void show(const std::string& title, const std::string& text, MsgIcon icon) override;
    // Numbered files are already closed and the program-end hooks have run (EndProgram).
    [[noreturn]] void endProgram(int status) override;
};

// While it lives, every box of the window also offers a button with this caption, and choosing it
// calls stop: for a long run of operations that may raise box after box, such as the drawer cycle
// on a port that cannot be opened, which the user must be able to end from the box itself.
class MsgBoxStopButton {
  public:
    MsgBoxStopButton(std::string caption, std::function<void()> stop);
    ~MsgBoxStopButton();
    MsgBoxStopButton(const MsgBoxStopButton&) = delete;
    MsgBoxStopButton& operator=(const MsgBoxStopButton&) = delete;

    const std::string caption;
    const std::function<void()> stop;

  private:
    // Nested runs restore the outer button when they end.
    const MsgBoxStopButton* previous_;
};

}  // namespace lumbra::platform
