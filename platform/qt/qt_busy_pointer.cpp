#include "platform/busy_pointer.h"

#include <QCursor>
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
    // The program's only override is the hourglass, so counting them is enough to put them back.
    while (QGuiApplication::overrideCursor() != nullptr) {
        ++paused_;
        QGuiApplication::restoreOverrideCursor();
    }
}

BusyPointerPause::~BusyPointerPause() {
    for (int i = 0; i < paused_; ++i)
        QGuiApplication::setOverrideCursor(QCursor(Qt::WaitCursor));
}

}  // namespace lumbra::platform
