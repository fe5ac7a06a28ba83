#pragma once
// Hears the stop signals (stop_signals.h) in Qt's event loop: the signal handler only records the
// signal, and the action runs later as an ordinary event of the one user-interface thread.

#include <QObject>
#include <functional>

namespace lumbra::platform {

// Runs action each time a stop signal has arrived, while context lives and a StopSignalCatcher
// does; does nothing when no catcher lives.
void OnStopSignal(QObject* context, std::function<void()> action);

}  // namespace lumbra::platform
