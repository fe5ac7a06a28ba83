#include "tests/support/recording_msg_sink.h"

namespace lumbra::test {

void PrintTo(const RecordedBox& box, std::ostream* os) {
    *os << "{title \"" << box.title << "\", text \"" << box.text << "\", icon "
        << static_cast<int>(box.icon) << "}";
}

RecordingMsgSink::RecordingMsgSink() : previous_(&platform::CurrentMsgSink()) {
    platform::SetMsgSink(this);
}

RecordingMsgSink::~RecordingMsgSink() {
    platform::SetMsgSink(previous_);
}

void RecordingMsgSink::show(const std::string& title, const std::string& text,
                            platform::MsgIcon icon) {
    boxes_.push_back({title, text, icon});
}

void RecordingMsgSink::endProgram(int status) {
    endings_.push_back(status);
    throw platform::ProgramEnded{status};
}

void RecordingMsgSink::clear() {
    boxes_.clear();
    endings_.clear();
}

}  // namespace lumbra::test
