#include "tools/console_msg_sink.h"

#include <cstdio>

#include "tools/tool_text.h"

namespace lumbra::ctl {
namespace {

// Boxes break their lines with CR LF; a terminal wants LF alone.
std::string ConsoleLines(const std::string& text) {
    std::string out;
    out.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == '\r' && i + 1 < text.size() && text[i + 1] == '\n') continue;
        out += text[i];
    }
    return out;
}

}  // namespace

ConsoleMsgSink::ConsoleMsgSink() : previous_(&platform::CurrentMsgSink()) {
    platform::SetMsgSink(this);
}

ConsoleMsgSink::~ConsoleMsgSink() {
    platform::SetMsgSink(previous_);
}

void ConsoleMsgSink::show(const std::string& title, const std::string& text, platform::MsgIcon) {
    ++boxes_;
    PrintLine(stderr, ConsoleLines(title));
    PrintLine(stderr, ConsoleLines(text));
}

void ConsoleMsgSink::endProgram(int status) {
    throw platform::ProgramEnded{status};
}

}  // namespace lumbra::ctl
