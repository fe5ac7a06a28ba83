#include "platform/pending_events.h"

#include <windows.h>

namespace lumbra::platform {

void ProcessPendingEvents() {
    MSG msg;
    while (::PeekMessageW(&msg, nullptr, 0, 0, PM_REMOVE)) {
        // The end of the program is for the main loop: put it back and let the caller return.
        if (msg.message == WM_QUIT) {
            ::PostQuitMessage(static_cast<int>(msg.wParam));
            return;
        }
        ::TranslateMessage(&msg);
        ::DispatchMessageW(&msg);
    }
}

}  // namespace lumbra::platform
