#pragma once
// The main window's layout, as both windows build it: every control with its kind, parent, caption,
// font and rectangle in twips (relative to its parent), and the menu bar. A page's controls are
// placed relative to the whole tab control, tab strip included.

#include <span>

namespace lumbra {

enum class CtlKind { Label, Tabs, Frame, Panel, DropDown, TextBox, Button, List, StatusBar };

// MS Sans Serif 8.25 pt (plain and bold), MS Sans Serif 9.75 pt bold, Courier New 8.25 pt and
// Fixedsys 9 pt.
enum class CtlFont { Sans, SansBold, Title, Courier, Fixedsys };

struct CtlLayout {
    const char* name;
    CtlKind kind;
    // "" for the client area, "#n" for page n of the tab control (0 first), else a frame's name.
    const char* parent;
    // Windows-1252.
    const char* caption;
    CtlFont font;
    int left, top, width, height;
};

struct MenuLayout {
    const char* name;
    // "" for a menu of the bar, else the name of the menu the entry belongs to.
    const char* menu;
    const char* caption;
};

inline constexpr int kClientWidthTwips = 9510;
inline constexpr int kClientHeightTwips = 6120;
// 15 twips to the pixel at 96 dots per inch.
inline constexpr int kTwipsPerPixel = 15;

// The window's caption, Windows-1252.
inline constexpr const char* kLumbraMnuCaption = "Configura\xE7\xE3o para POS";

// Controls in creation order: a parent comes before its children.
std::span<const CtlLayout> LumbraMnuControls();
// The tab control's six page captions; pages from kFirstSparePage on are out of use.
std::span<const char* const> LumbraMnuPages();
inline constexpr int kFirstSparePage = 3;
// Menus and their entries in the order they show.
std::span<const MenuLayout> LumbraMnuMenus();

// The layout entry of control name; nullptr when there is none.
const CtlLayout* FindControl(const char* name);

}  // namespace lumbra
