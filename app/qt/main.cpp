// Lumbra: configures and tests the peripherals of a point-of-sale terminal.

#include <QApplication>
#include <cstdio>
#include <cstdlib>

#include "app/qt/LumbraMnu.h"
#include "platform/msg_box.h"
#include "platform/program.h"
#include "platform/qt/qt_msg_box.h"
#include "platform/stop_signals.h"

namespace {

bool HasEnv(const char* name) {
    const char* value = std::getenv(name);
    return value != nullptr && *value != '\0';
}

// Without a desktop Qt would abort with a platform-plugin trace; say what is missing instead.
bool HasDesktop() {
    return HasEnv("DISPLAY") || HasEnv("WAYLAND_DISPLAY") || HasEnv("QT_QPA_PLATFORM");
}

}  // namespace

int main(int argc, char** argv) {
    lumbra::platform::SetProgramArgs(argc, argv);
    if (!HasDesktop()) {
        std::fputs(
            "lumbra: the window needs a desktop (no DISPLAY nor WAYLAND_DISPLAY is set; "
            "QT_QPA_PLATFORM=offscreen runs it without one)\n",
            stderr);
        return 1;
    }
    QApplication app(argc, argv);
    lumbra::platform::QtMsgSink sink;
    lumbra::platform::SetMsgSink(&sink);

    const lumbra::platform::StopSignalCatcher stopSignals;
    lumbra::LumbraMnu window;
    window.closeOnStopSignals();
    // A parameter file that cannot be opened ends the program here, before any window shows.
    window.Form_Load();
    window.show();
    const int status = QApplication::exec();

    lumbra::platform::SetMsgSink(nullptr);
    return status;
}
