#pragma once
// Lets the window breathe inside a long operation: pending window events (repaints, clicks,
// timers) run before the operation goes on. Their handlers run inside the caller's call.

namespace lumbra::platform {

// Runs the events that are pending now; does nothing when no application object exists yet.
void ProcessPendingEvents();

}  // namespace lumbra::platform
