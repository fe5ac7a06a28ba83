#pragma once
// The layout's five fonts at one dots-per-inch value, made again when the window moves to a screen
// of another density.

#include <windows.h>

#include <array>

#include "app/window_layout.h"

namespace lumbra {

class WinFonts {
  public:
    WinFonts() = default;
    ~WinFonts() { release(); }
    WinFonts(const WinFonts&) = delete;
    WinFonts& operator=(const WinFonts&) = delete;

    // Makes the fonts for dpi dots per inch, releasing the earlier ones.
    void make(int dpi);
    HFONT get(CtlFont font) const { return fonts_[static_cast<std::size_t>(font)]; }

  private:
    void release();
    std::array<HFONT, 5> fonts_{};
};

// Dots per inch of a window: GetDpiForWindow where Windows has it (10 and later), else the
// screen's.
int WindowDpi(HWND window);
// Layout twips as pixels at dpi (1440 twips to the inch).
inline int TwipsToPixels(int twips, int dpi) {
    return ::MulDiv(twips, dpi, 1440);
}

}  // namespace lumbra
