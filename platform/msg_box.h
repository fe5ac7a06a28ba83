#pragma once
// Message boxes and "end the program at once". Library code speaks to the user and stops the
// program only through here; the window installs a Qt implementation, the console tool one that
// writes to standard error, and tests a recording one.

#include <functional>
#include <string>

namespace lumbra::platform {

enum class MsgIcon { Critical, Exclamation, Information, Question };

class MsgSink {
  public:
    virtual ~MsgSink() = default;
    // Shows a modal box with an OK button and returns when it is dismissed.
    virtual void show(const std::string& title, const std::string& text, MsgIcon icon) = 0;
    // Ends the program at once. Must not return (a test implementation throws ProgramEnded).
    [[noreturn]] virtual void endProgram(int status) = 0;
};

// Thrown by test implementations of endProgram, so that a test observes the end of the program.
struct ProgramEnded {
    int status = 0;
};

// Installs the sink used from now on (not owned); nullptr restores the default, which writes the
// box to standard error and ends with std::exit.
void SetMsgSink(MsgSink* sink);
MsgSink& CurrentMsgSink();

// While it lives, every box also offers a button with this caption, for a long run of operations
// that may raise box after box (the drawer cycle on a port that cannot be opened), which the user
// must be able to end from the box itself. A sink that can show the button asks
// CurrentStopButton() and calls choose() when the user picks it; the run asks chosen(). Once
// chosen, no further box shows while it lives: what is left of the operation under way would only
// report the same failure again.
class MsgBoxStopButton {
  public:
    explicit MsgBoxStopButton(std::string caption);
    ~MsgBoxStopButton();
    MsgBoxStopButton(const MsgBoxStopButton&) = delete;
    MsgBoxStopButton& operator=(const MsgBoxStopButton&) = delete;

    const std::string caption;
    bool chosen() const { return chosen_; }
    void choose() { chosen_ = true; }

  private:
    // Nested runs give the outer button back when they end.
    MsgBoxStopButton* previous_;
    bool chosen_ = false;
};

// The button the boxes offer now; nullptr when none.
MsgBoxStopButton* CurrentStopButton();

// Texts are Windows-1252 bytes, as everywhere in the program.
void MsgBox(const std::string& title, const std::string& text, MsgIcon icon = MsgIcon::Critical);
// Closes every numbered file, runs the hooks registered with AtProgramEnd (newest first), then asks
// the sink to end the program.
[[noreturn]] void EndProgram(int status = 0);
// Registers clean-up that must run when the program ends at once (closing serial ports, say).
void AtProgramEnd(std::function<void()> hook);

}  // namespace lumbra::platform
