#pragma once
// What a text box takes in: the program's text goes out in Windows-1252, so a typed or pasted
// character that Windows-1252 lacks is refused (with the system's beep), as the Linux window's
// boxes refuse it.

#include <windows.h>

namespace lumbra {

void FilterTextBox(HWND box);

}  // namespace lumbra
