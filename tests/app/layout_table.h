#pragma once
// The main window's layout as the system's documentation gives it, kept apart from the program's
// own table so that a changed number there shows: each control's rectangle in twips, relative to
// its parent (a page's controls relative to the whole tab control). Both windows are checked
// against it, each converting at 96 dots per inch (15 twips to the pixel).

#include <array>

namespace lumbra::test {

struct ExpectedRect {
    const char* name;
    int left, top, width, height;
};

inline constexpr std::array<ExpectedRect, 32> kLayoutTwips{{
    {"laTit", 0, 0, 9510, 300},          {"tbOpc", 0, 360, 9495, 4875},
    {"frOpcSai", 120, 630, 5865, 3495},  {"spLigPor", 120, 420, 1125, 285},
    {"cbLigPor", 1350, 420, 2505, 315},  {"txLigTst", 300, 2040, 3195, 285},
    {"cmLigTst", 3870, 2025, 1635, 315}, {"laLigRes", 180, 3060, 5475, 315},
    {"frCnv", 6030, 630, 3345, 3495},    {"spCnvDec", 120, 480, 1275, 330},
    {"txCnvDec", 1410, 480, 1785, 330},  {"SSPanel1", 120, 960, 1275, 330},
    {"txCnvHex", 1410, 960, 1785, 330},  {"grGav", 180, 450, 9075, 3945},
    {"spGav", 210, 480, 1815, 285},      {"cbGavAbr", 2100, 480, 4185, 315},
    {"txGavAbr", 360, 1080, 5955, 315},  {"cmAbrCic", 540, 1860, 1425, 375},
    {"cmGavAbr", 7170, 3060, 1275, 315}, {"frDis", 180, 450, 9075, 3945},
    {"spDisPor", 210, 480, 1815, 315},   {"cbDisPor", 2040, 480, 4185, 315},
    {"spDisCmd", 210, 1260, 1815, 315},  {"cbDisCmd", 2040, 1260, 4185, 315},
    {"cmDisExe", 2040, 1620, 1275, 315}, {"spDisTxm", 210, 2790, 1815, 315},
    {"txDisTxm", 2040, 2790, 5955, 330}, {"cmDisTxm", 2040, 3180, 1275, 315},
    {"lbRes", 1200, 1110, 4425, 1950},   {"frCmd", 0, 5220, 9510, 600},
    {"cmFim", 7950, 180, 1425, 360},     {"sBar", 0, 5820, 9510, 300},
}};

inline constexpr int kClientTwips[2] = {9510, 6120};

}  // namespace lumbra::test
