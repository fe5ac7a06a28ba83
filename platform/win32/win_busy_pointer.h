#pragma once
// What the window asks of the hourglass of busy_pointer.h: while it is on, the window answers
// WM_SETCURSOR with it, so that moving the mouse does not bring the arrow back.

#include <windows.h>

namespace lumbra::platform {

// True while an action shows the hourglass and no message box has taken it off.
bool BusyPointerShown();
// The pointer the window should show now: the hourglass while busy, else nullptr (the control's
// own pointer).
HCURSOR BusyCursor();

}  // namespace lumbra::platform
