#pragma once
// The signals that ask the program to stop: Ctrl+C (SIGINT), SIGTERM and SIGHUP. While a
// StopSignalCatcher lives, each of them is only recorded; the program then ends in its own time,
// closing its ports on the way. A wait for a device (a write that has not gone out yet) asks
// StopRequested() at every step and gives up soon after (write_stall.h), so a signal ends every
// wait within a fraction of a second.
//
// The handlers do not ask the system to resume interrupted calls: a call blocked in the kernel
// comes back with EINTR, and the loops around such calls look at StopRequested() before they try
// again.

namespace lumbra::platform {

// The first stop signal caught since the catcher was installed; 0 when none.
int StopSignal();
bool StopRequested();

// A descriptor that becomes readable when a stop signal arrives, for an event loop that wants to
// hear of it; -1 while no catcher lives.
int StopSignalDescriptor();

// Catches the stop signals while it lives and gives the previous handlers back when it goes. One
// at a time; a new catcher forgets the signals caught before it.
class StopSignalCatcher {
  public:
    StopSignalCatcher();
    ~StopSignalCatcher();
    StopSignalCatcher(const StopSignalCatcher&) = delete;
    StopSignalCatcher& operator=(const StopSignalCatcher&) = delete;
};

}  // namespace lumbra::platform
