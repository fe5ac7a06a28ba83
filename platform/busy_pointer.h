#pragma once
// The hourglass over the whole application while a device action runs; the pointer returns when the
// object goes out of scope, also when the action leaves by an exception. The window's toolkit
// implements it (qt/ on Linux, win32/ on Windows).

namespace lumbra::platform {

class BusyPointer {
  public:
    BusyPointer();
    ~BusyPointer();
    BusyPointer(const BusyPointer&) = delete;
    BusyPointer& operator=(const BusyPointer&) = delete;

  private:
    // False when no window application existed at construction, so there is nothing to restore.
    bool shown_ = false;
};

// While it lives the hourglass is off, however many actions asked for it: a message box waits for
// the user, not the user for the program. The hourglasses it took off come back when it goes, so
// the hourglass returns if the action goes on after the box.
class BusyPointerPause {
  public:
    BusyPointerPause();
    ~BusyPointerPause();
    BusyPointerPause(const BusyPointerPause&) = delete;
    BusyPointerPause& operator=(const BusyPointerPause&) = delete;

  private:
    int paused_ = 0;
};

}  // namespace lumbra::platform
