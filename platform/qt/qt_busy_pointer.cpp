#include "platform/qt/qt_busy_pointer.h"

#include <QGuiApplication>

namespace lumbra::platform {
namespace {

bool HaveGui() {
    return qobject_cast<QGuiApplication*>(QCoreApplication::instance()) != nullptr;
}

}  // namespace

BusyPointer::BusyPointer() {
    if (!HaveGui()) return;
    // An override stacks, so an action started from inside another keeps the hourglass until the
    // outer one ends.
    QGuiApplication::setOverrideCursor(QCursor(Qt::WaitCursor));
    shown_ = true;
}

BusyPointer::~BusyPointer() {
    if (shown_) QGuiApplication::restoreOverrideCursor();
}

BusyPointerPause::BusyPointerPause() {
    if (!HaveGui()) return;
    while (const QCursor* cursor = QGuiApplication::overrideCursor()) {
        paused_.push_back(*cursor);
        QGuiApplication::restoreOverrideCursor();
    }
}

BusyPointerPause::~BusyPointerPause() {
    for (auto it = paused_.rbegin(); it != paused_.rend(); ++it)
        QGuiApplication::setOverrideCursor(*it);
}

}  // namespace lumbra::platform
