// Which control event runs which handler.

#include <QAction>
#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>

#include "app/LumbraMnu.h"

namespace lumbra {

void LumbraMnu::connectEvents() {
    connect(ui.txCnvDec, &QLineEdit::textChanged, this, &LumbraMnu::txCnvDec_Change);
    connect(ui.txCnvHex, &QLineEdit::textChanged, this, &LumbraMnu::txCnvHex_Change);

    connect(ui.cmLigTst, &QPushButton::clicked, this, &LumbraMnu::cmLigTst_Click);
    connect(ui.cmGavAbr, &QPushButton::clicked, this, &LumbraMnu::cmGavAbr_Click);
    connect(ui.cmAbrCic, &QPushButton::clicked, this, &LumbraMnu::cmAbrCic_Click);
    connect(ui.cmDisExe, &QPushButton::clicked, this, &LumbraMnu::cmDisExe_Click);
    connect(ui.cmDisTxm, &QPushButton::clicked, this, &LumbraMnu::cmDisTxm_Click);

    // A new selection shows its command; so does picking the mode that is already selected, which
    // brings back the row's own command after a cycle left the last substituted one in the box.
    connect(ui.cbGavAbr, &QComboBox::currentIndexChanged, this, &LumbraMnu::cbGavAbr_Click);
    connect(ui.cbGavAbr, &QComboBox::activated, this, &LumbraMnu::cbGavAbr_Click);

    connect(ui.mnuLerCfg, &QAction::triggered, this, &LumbraMnu::mnuLerCfg_Click);
    connect(ui.mnuTbCfg, &QAction::triggered, this, &LumbraMnu::mnuTbCfg_Click);
    connect(ui.cmFim, &QPushButton::clicked, this, &QWidget::close);
    connect(ui.mnuFim, &QAction::triggered, this, &QWidget::close);
}

}  // namespace lumbra
