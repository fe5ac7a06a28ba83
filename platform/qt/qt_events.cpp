#include "platform/pending_events.h"

#include <QCoreApplication>

namespace lumbra::platform {

void ProcessPendingEvents() {
    if (QCoreApplication::instance() == nullptr) return;
    // Posted events first (deferred slots, layout requests), then what the window system delivered.
    QCoreApplication::sendPostedEvents();
    QCoreApplication::processEvents(QEventLoop::AllEvents);
}

}  // namespace lumbra::platform
