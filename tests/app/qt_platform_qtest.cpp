// The Qt side of the platform layer: message boxes, the busy pointer, yielding to events.

#include <QApplication>
#include <QMessageBox>
#include <QPushButton>
#include <QTest>
#include <QTimer>
#include <stdexcept>

#include "platform/qt_busy_pointer.h"
#include "platform/qt_events.h"
#include "platform/qt_msg_box.h"

namespace lumbra::platform {

class QtPlatformTest : public QObject {
    Q_OBJECT

  private slots:
    void messageBoxShowsItsIconAndTheTextsAsWritten() {
        QString title;
        QString text;
        int icon = -1;
        QTimer::singleShot(0, [&] {
            auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
            if (box == nullptr) return;
            icon = box->icon();
            title = box->windowTitle();
            // Plain text as shown: a "<" in a file name must not turn into markup.
            text = box->textFormat() == Qt::PlainText ? box->text() : QString();
            box->button(QMessageBox::Ok)->click();
        });
        QtMsgSink().show("Erro no ficheiro: Liga\xE7\xE3o", "<b>N\xE3o</b>", MsgIcon::Exclamation);
        QCOMPARE(icon, int(QMessageBox::Warning));
        QCOMPARE(title, QString::fromUtf8("Erro no ficheiro: Ligação"));
        QCOMPARE(text, QString::fromUtf8("<b>Não</b>"));
    }

    void busyPointerShowsTheHourglassUntilTheOutermostScopeEnds() {
        try {
            BusyPointer outer;
            { BusyPointer inner; }
            QCOMPARE(QGuiApplication::overrideCursor()->shape(), Qt::WaitCursor);
            throw std::runtime_error("device gone");
        } catch (const std::runtime_error&) {
        }
        QVERIFY(QGuiApplication::overrideCursor() == nullptr);
    }

    void pendingEventsRunInsideTheCall() {
        int ran = 0;
        QObject target;
        for (int i = 0; i < 2; ++i) {
            QMetaObject::invokeMethod(
                &target, [&ran] { ++ran; }, Qt::QueuedConnection);
        }
        ProcessPendingEvents();
        QCOMPARE(ran, 2);
    }
};

}  // namespace lumbra::platform

QTEST_MAIN(lumbra::platform::QtPlatformTest)
#include "qt_platform_qtest.moc"
