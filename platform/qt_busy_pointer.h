#pragma once
// The hourglass over the whole application while a device action runs; the pointer returns when the
// object goes out of scope, also when the action leaves by an exception.

namespace lumbra::platform {

class BusyPointer {
  public:
    BusyPointer();
    ~BusyPointer();
    BusyPointer(const BusyPointer&) = delete;
    BusyPointer& operator=(const BusyPointer&) = delete;

  private:
    // False when no GUI application existed at construction, so there is nothing to restore.
    bool shown_ = false;
};

}  // namespace lumbra::platform
