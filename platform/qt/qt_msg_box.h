#pragma once
// The window's message boxes: a modal QMessageBox with the box's icon and an OK button (and the
// stop button of msg_box.h while one lives), and the end of the program that closes the windows
// before the process ends. The hourglass is off while a box waits for the user.

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

}  // namespace lumbra::platform
