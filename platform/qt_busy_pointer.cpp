#include "platform/qt_busy_pointer.h"

#include <QCursor>
#include <QGuiApplication>

namespace lumbra::platform {

BusyPointer::BusyPointer() {
    if (qobject_cast<QGuiApplication*>(QCoreApplication::instance()) == nullptr) return;
    // An override stacks, so an action started from inside another keeps the hourglass until the
    // outer one ends.
    QGuiApplication::setOverrideCursor(QCursor(Qt::WaitCursor));
    shown_ = true;
}

BusyPointer::~BusyPointer() {
    if (shown_) QGuiApplication::restoreOverrideCursor();
}

}  // namespace lumbra::platform
