#include "platform/msg_box.h"

#include <cstdio>
#include <cstdlib>
#include <utility>
#include <vector>

#include "platform/file_handles.h"

namespace lumbra::platform {
namespace {

// Used until the window (or a test) installs its own: the box goes to standard error as
// "title: text", and the end is std::exit.
class StderrMsgSink : public MsgSink {
  public:
    void show(const std::string& title, const std::string& text, MsgIcon) override {
        std::fprintf(stderr, "%s: %s\n", title.c_str(), text.c_str());
    }
    [[noreturn]] void endProgram(int status) override { std::exit(status); }
};

StderrMsgSink& DefaultSink() {
    static StderrMsgSink sink;
    return sink;
}

MsgSink*& InstalledSink() {
    static MsgSink* sink = nullptr;
    return sink;
}

MsgBoxStopButton*& StopButton() {
    static MsgBoxStopButton* current = nullptr;
    return current;
}

std::vector<std::function<void()>>& EndHooks() {
    static std::vector<std::function<void()>> hooks;
    return hooks;
}

}  // namespace

void SetMsgSink(MsgSink* sink) {
    InstalledSink() = sink;
}

MsgSink& CurrentMsgSink() {
    MsgSink* sink = InstalledSink();
    return sink != nullptr ? *sink : DefaultSink();
}

MsgBoxStopButton::MsgBoxStopButton(std::string caption_)
    : caption(std::move(caption_)), previous_(StopButton()) {
    StopButton() = this;
}

MsgBoxStopButton::~MsgBoxStopButton() {
    StopButton() = previous_;
}

MsgBoxStopButton* CurrentStopButton() {
    return StopButton();
}

void MsgBox(const std::string& title, const std::string& text, MsgIcon icon) {
    if (const MsgBoxStopButton* stop = StopButton(); stop != nullptr && stop->chosen()) return;
    CurrentMsgSink().show(title, text, icon);
}

void EndProgram(int status) {
    FileCloseAll();
    // Taken out of the list first: each hook runs once, even if ending is interrupted (a test's
    // sink throws) and the program later ends again.
    std::vector<std::function<void()>> hooks;
    hooks.swap(EndHooks());
    for (auto it = hooks.rbegin(); it != hooks.rend(); ++it) {
        // The program is ending: one failing clean-up must not keep the others from running.
        try {
            (*it)();
        } catch (...) {
        }
    }
    CurrentMsgSink().endProgram(status);
    // A sink must not return from endProgram; should one do so, the program still ends.
    std::abort();
}

void AtProgramEnd(std::function<void()> hook) {
    if (hook) EndHooks().push_back(std::move(hook));
}

}  // namespace lumbra::platform
