#include "platform/qt/qt_stop_signals.h"

#include <unistd.h>

#include <QSocketNotifier>

#include "platform/stop_signals.h"

namespace lumbra::platform {

void OnStopSignal(QObject* context, std::function<void()> action) {
    const int fd = StopSignalDescriptor();
    if (fd < 0) return;
    auto* notifier = new QSocketNotifier(fd, QSocketNotifier::Read, context);
    QObject::connect(notifier, &QSocketNotifier::activated, context,
                     [fd, action = std::move(action)] {
                         char drained[64];
                         while (::read(fd, drained, sizeof drained) > 0) {
                         }
                         action();
                     });
}

}  // namespace lumbra::platform
