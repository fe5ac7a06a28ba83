#include "platform/busy_pointer.h"

#include "platform/win32/win_busy_pointer.h"

namespace lumbra::platform {
namespace {

// Everything runs on the window's thread: a plain count of the actions under way.
int busy = 0;

HCURSOR Wait() {
    return ::LoadCursorW(nullptr, IDC_WAIT);
}

void ShowNow() {
    ::SetCursor(busy > 0 ? Wait() : ::LoadCursorW(nullptr, IDC_ARROW));
}

}  // namespace

bool BusyPointerShown() {
    return busy > 0;
}

HCURSOR BusyCursor() {
    return busy > 0 ? Wait() : nullptr;
}

BusyPointer::BusyPointer() {
    // Nested actions keep the hourglass until the outer one ends.
    ++busy;
    shown_ = true;
    ShowNow();
}

BusyPointer::~BusyPointer() {
    if (!shown_) return;
    // A pause that lives longer than this action took its count off already.
    if (busy > 0) --busy;
    ShowNow();
}

BusyPointerPause::BusyPointerPause() : paused_(busy) {
    busy = 0;
    ShowNow();
}

BusyPointerPause::~BusyPointerPause() {
    busy += paused_;
    ShowNow();
}

}  // namespace lumbra::platform
