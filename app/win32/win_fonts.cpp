#include "app/win32/win_fonts.h"

namespace lumbra {
namespace {

struct FontSpec {
    const wchar_t* face;
    // Hundredths of a point.
    int size;
    int weight;
};

// In CtlFont's order.
constexpr std::array<FontSpec, 5> kFonts{{
    {L"MS Sans Serif", 825, FW_NORMAL},
    {L"MS Sans Serif", 825, FW_BOLD},
    {L"MS Sans Serif", 975, FW_BOLD},
    {L"Courier New", 825, FW_NORMAL},
    {L"Fixedsys", 900, FW_NORMAL},
}};

}  // namespace

void WinFonts::make(int dpi) {
    release();
    for (std::size_t i = 0; i < kFonts.size(); ++i) {
        const FontSpec& f = kFonts[i];
        // A negative height asks for the character height, as a size in points means.
        fonts_[i] = ::CreateFontW(-::MulDiv(f.size, dpi, 7200), 0, 0, 0, f.weight, FALSE, FALSE,
                                  FALSE, DEFAULT_CHARSET, OUT_DEFAULT_PRECIS, CLIP_DEFAULT_PRECIS,
                                  DEFAULT_QUALITY, DEFAULT_PITCH | FF_DONTCARE, f.face);
    }
}

void WinFonts::release() {
    for (HFONT& f : fonts_) {
        if (f != nullptr) ::DeleteObject(f);
        f = nullptr;
    }
}

int WindowDpi(HWND window) {
    // Windows 7 lacks GetDpiForWindow: asked for by name, never linked.
    using GetDpiForWindowFn = UINT(WINAPI*)(HWND);
    static const auto getDpiForWindow = reinterpret_cast<GetDpiForWindowFn>(reinterpret_cast<void*>(
        ::GetProcAddress(::GetModuleHandleW(L"user32.dll"), "GetDpiForWindow")));
    if (getDpiForWindow != nullptr && window != nullptr) {
        const UINT dpi = getDpiForWindow(window);
        if (dpi != 0) return static_cast<int>(dpi);
    }
    const HDC screen = ::GetDC(nullptr);
    const int dpi = ::GetDeviceCaps(screen, LOGPIXELSY);
    ::ReleaseDC(nullptr, screen);
    return dpi > 0 ? dpi : 96;
}

}  // namespace lumbra
