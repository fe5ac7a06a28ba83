#pragma once
// The message box of the tests: records every box in order and never waits for anyone, and turns
// the end of the program into a ProgramEnded exception the test can expect. Installed while the
// object lives; the sink that was current before comes back after it.

#include <ostream>
#include <string>
#include <vector>

#include "platform/msg_box.h"

namespace lumbra::test {

struct RecordedBox {
    std::string title;
    std::string text;
    platform::MsgIcon icon = platform::MsgIcon::Critical;
    friend bool operator==(const RecordedBox&, const RecordedBox&) = default;
};

inline void PrintTo(const RecordedBox& box, std::ostream* os) {
    *os << "{title \"" << box.title << "\", text \"" << box.text << "\", icon "
        << static_cast<int>(box.icon) << "}";
}

class RecordingMsgSink : public platform::MsgSink {
  public:
    RecordingMsgSink() : previous_(&platform::CurrentMsgSink()) { platform::SetMsgSink(this); }
    ~RecordingMsgSink() override { platform::SetMsgSink(previous_); }
    RecordingMsgSink(const RecordingMsgSink&) = delete;
    RecordingMsgSink& operator=(const RecordingMsgSink&) = delete;

    void show(const std::string& title, const std::string& text, platform::MsgIcon icon) override {
        boxes_.push_back({title, text, icon});
    }
    [[noreturn]] void endProgram(int status) override {
        endings_.push_back(status);
        throw platform::ProgramEnded{status};
    }

    const std::vector<RecordedBox>& boxes() const { return boxes_; }
    const std::vector<int>& endings() const { return endings_; }
    void clear() { boxes_.clear(), endings_.clear(); }

  private:
    platform::MsgSink* previous_;
    std::vector<RecordedBox> boxes_;
    std::vector<int> endings_;
};

}  // namespace lumbra::test
