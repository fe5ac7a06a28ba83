#include "platform/qt/qt_msg_box.h"

#include <QApplication>
#include <QMessageBox>
#include <QPushButton>
#include <QWidget>
#include <cstdio>
#include <cstdlib>

#include "platform/busy_pointer.h"
#include "platform/qt/qt_codepage.h"
#include "platform/stop_signals.h"

namespace lumbra::platform {
namespace {

QMessageBox::Icon BoxIcon(MsgIcon icon) {
    switch (icon) {
        case MsgIcon::Critical:
            return QMessageBox::Critical;
        case MsgIcon::Exclamation:
            return QMessageBox::Warning;
        case MsgIcon::Information:
            return QMessageBox::Information;
        case MsgIcon::Question:
            return QMessageBox::Question;
    }
    return QMessageBox::NoIcon;
}

bool HaveWidgets() {
    return qobject_cast<QApplication*>(QCoreApplication::instance()) != nullptr;
}

}  // namespace

void QtMsgSink::show(const std::string& title, const std::string& text, MsgIcon icon) {
    // Once the program has been told to stop, no box may hold it waiting for an answer.
    if (!HaveWidgets() || StopRequested()) {
        std::fprintf(stderr, "%s: %s\n", FromCp1252(title).toUtf8().constData(),
                     FromCp1252(text).toUtf8().constData());
        return;
    }
    QMessageBox box(BoxIcon(icon), FromCp1252(title), FromCp1252(text), QMessageBox::Ok,
                    QApplication::activeWindow());
    // Our texts are plain: a "<" in a file name must not turn the text into markup.
    box.setTextFormat(Qt::PlainText);
    MsgBoxStopButton* stop = CurrentStopButton();
    const QAbstractButton* stopButton =
        stop != nullptr ? box.addButton(FromCp1252(stop->caption), QMessageBox::RejectRole)
                        : nullptr;
    box.setDefaultButton(QMessageBox::Ok);
    {
        const BusyPointerPause waitingForTheUser;
        box.exec();
    }
    if (stopButton != nullptr && box.clickedButton() == stopButton) stop->choose();
}

void QtMsgSink::endProgram(int status) {
    if (HaveWidgets()) {
        // Hide rather than close: closing would run the main window's shutdown a second time.
        const auto windows = QApplication::topLevelWidgets();
        for (QWidget* w : windows)
            w->hide();
    }
    std::exit(status);
}

}  // namespace lumbra::platform
