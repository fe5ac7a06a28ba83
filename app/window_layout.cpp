#include "app/window_layout.h"

#include <cstring>

namespace lumbra {
namespace {

using K = CtlKind;
using F = CtlFont;

constexpr CtlLayout kControls[] = {
    {"laTit", K::Label, "", "", F::Title, 0, 0, 9510, 300},
    {"tbOpc", K::Tabs, "", "", F::Sans, 0, 360, 9495, 4875},

    {"frOpcSai", K::Frame, "#0", "Liga\xE7\xE3o", F::SansBold, 120, 630, 5865, 3495},
    {"spLigPor", K::Panel, "frOpcSai", "Porta", F::Sans, 120, 420, 1125, 285},
    {"cbLigPor", K::DropDown, "frOpcSai", "", F::Sans, 1350, 420, 2505, 315},
    {"txLigTst", K::TextBox, "frOpcSai", "Teste de liga\xE7\xE3o", F::Courier, 300, 2040, 3195,
     285},
    {"cmLigTst", K::Button, "frOpcSai", "Teste de liga\xE7\xE3o", F::Sans, 3870, 2025, 1635, 315},
    {"laLigRes", K::Label, "frOpcSai", "", F::Sans, 180, 3060, 5475, 315},
    {"frCnv", K::Frame, "#0", "Convers\xE3o de base", F::SansBold, 6030, 630, 3345, 3495},
    {"spCnvDec", K::Panel, "frCnv", "Decimal", F::Sans, 120, 480, 1275, 330},
    {"txCnvDec", K::TextBox, "frCnv", "", F::Fixedsys, 1410, 480, 1785, 330},
    {"SSPanel1", K::Panel, "frCnv", "Hexadecimal", F::Sans, 120, 960, 1275, 330},
    {"txCnvHex", K::TextBox, "frCnv", "", F::Fixedsys, 1410, 960, 1785, 330},

    {"grGav", K::Frame, "#1", "Abertura de gaveta", F::SansBold, 180, 450, 9075, 3945},
    {"spGav", K::Panel, "grGav", "Modo de abertura", F::Sans, 210, 480, 1815, 285},
    {"cbGavAbr", K::DropDown, "grGav", "", F::Sans, 2100, 480, 4185, 315},
    {"txGavAbr", K::TextBox, "grGav", "", F::Sans, 360, 1080, 5955, 315},
    {"cmAbrCic", K::Button, "grGav", "Ciclo", F::Sans, 540, 1860, 1425, 375},
    {"cmGavAbr", K::Button, "grGav", "Abrir", F::Sans, 7170, 3060, 1275, 315},

    {"frDis", K::Frame, "#2", "Comandos para display", F::SansBold, 180, 450, 9075, 3945},
    {"spDisPor", K::Panel, "frDis", "Porta de liga\xE7\xE3o", F::Sans, 210, 480, 1815, 315},
    {"cbDisPor", K::DropDown, "frDis", "", F::Sans, 2040, 480, 4185, 315},
    {"spDisCmd", K::Panel, "frDis", "Comando", F::Sans, 210, 1260, 1815, 315},
    {"cbDisCmd", K::DropDown, "frDis", "", F::Sans, 2040, 1260, 4185, 315},
    {"cmDisExe", K::Button, "frDis", "Executar", F::Sans, 2040, 1620, 1275, 315},
    {"spDisTxm", K::Panel, "frDis", "Texto a mostrar", F::Sans, 210, 2790, 1815, 315},
    {"txDisTxm", K::TextBox, "frDis", "Texto para display", F::Fixedsys, 2040, 2790, 5955, 330},
    {"cmDisTxm", K::Button, "frDis", "Mostrar", F::Sans, 2040, 3180, 1275, 315},

    // The message list lives on the sixth page, which the user cannot reach.
    {"lbRes", K::List, "#5", "", F::Courier, 1200, 1110, 4425, 1950},

    {"frCmd", K::Frame, "", "", F::SansBold, 0, 5220, 9510, 600},
    {"cmFim", K::Button, "frCmd", "Terminar", F::SansBold, 7950, 180, 1425, 360},
    {"sBar", K::StatusBar, "", "", F::Sans, 0, 5820, 9510, 300},
};

constexpr const char* kPages[] = {
    "Op\xE7\xF5"
    "es",
    "Gaveta",
    "Display",
    "x",
    "x",
    "x"};

constexpr MenuLayout kMenus[] = {
    {"mnuFic", "", "Ficheiro"},
    {"mnuLerCfg", "mnuFic", "Ler configura\xE7\xE3o"},
    {"mnuFim", "mnuFic", "Terminar"},
    {"mnuTb", "", "Tabelas"},
    {"mnuTbCfg", "mnuTb", "Configura\xE7\xE3o"},
};

}  // namespace

std::span<const CtlLayout> LumbraMnuControls() {
    return kControls;
}

std::span<const char* const> LumbraMnuPages() {
    return kPages;
}

std::span<const MenuLayout> LumbraMnuMenus() {
    return kMenus;
}

const CtlLayout* FindControl(const char* name) {
    for (const CtlLayout& c : kControls)
        if (std::strcmp(c.name, name) == 0) return &c;
    return nullptr;
}

}  // namespace lumbra
