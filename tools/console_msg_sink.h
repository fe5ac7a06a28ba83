#pragma once
// The message box of the console: each box becomes its title and its text, one line each, on
// standard error in UTF-8; the end of the program becomes a platform::ProgramEnded exception, so
// that the tool can leave with its own exit status after closing the ports. Installed while the
// object lives.

#include <string>

#include "platform/msg_box.h"

namespace lumbra::ctl {

class ConsoleMsgSink : public platform::MsgSink {
  public:
    ConsoleMsgSink();
    ~ConsoleMsgSink() override;
    ConsoleMsgSink(const ConsoleMsgSink&) = delete;
    ConsoleMsgSink& operator=(const ConsoleMsgSink&) = delete;

    void show(const std::string& title, const std::string& text, platform::MsgIcon icon) override;
    [[noreturn]] void endProgram(int status) override;

    // How many boxes were shown: every channel failure shows one.
    int boxes() const { return boxes_; }

  private:
    platform::MsgSink* previous_;
    int boxes_ = 0;
};

}  // namespace lumbra::ctl
