// Which control event runs which handler of the form.

#include <QAction>
#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>

#include "app/qt/LumbraMnu.h"

namespace lumbra {

void LumbraMnu::connectEvents() {
    LumbraMnuForm* f = &form;
    connect(ui.txCnvDec, &QLineEdit::textChanged, this, [f] { f->txCnvDec_Change(); });
    connect(ui.txCnvHex, &QLineEdit::textChanged, this, [f] { f->txCnvHex_Change(); });

    connect(ui.cmLigTst, &QPushButton::clicked, this, [f] { f->cmLigTst_Click(); });
    connect(ui.cmGavAbr, &QPushButton::clicked, this, [f] { f->cmGavAbr_Click(); });
    connect(ui.cmAbrCic, &QPushButton::clicked, this, [f] { f->cmAbrCic_Click(); });
    connect(ui.cmDisExe, &QPushButton::clicked, this, [f] { f->cmDisExe_Click(); });
    connect(ui.cmDisTxm, &QPushButton::clicked, this, [f] { f->cmDisTxm_Click(); });

    // A new selection, and picking the entry already selected, are both a click of the list.
    connect(ui.cbGavAbr, &QComboBox::currentIndexChanged, this, [f] { f->cbGavAbr_Click(); });
    connect(ui.cbGavAbr, &QComboBox::activated, this, [f] { f->cbGavAbr_Click(); });

    connect(ui.mnuLerCfg, &QAction::triggered, this, [f] { f->mnuLerCfg_Click(); });
    connect(ui.mnuTbCfg, &QAction::triggered, this, [f] { f->mnuTbCfg_Click(); });
    connect(ui.cmFim, &QPushButton::clicked, this, [f] { f->cmFim_Click(); });
    connect(ui.mnuFim, &QAction::triggered, this, [f] { f->mnuFim_Click(); });
}

}  // namespace lumbra
