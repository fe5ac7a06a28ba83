// The main of the GoogleTest programs that need a QApplication: windows (the host form's, the main
// window's) are widgets, and serial ports deliver their events through the application's loop.
#include <gtest/gtest.h>

#include <QApplication>

#include "platform/program.h"

int main(int argc, char** argv) {
    // ctest sets the offscreen platform; a run by hand needs no display either.
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    testing::InitGoogleTest(&argc, argv);
    QApplication app(argc, argv);
    lumbra::platform::SetProgramArgs(argc, argv);
    return RUN_ALL_TESTS();
}
