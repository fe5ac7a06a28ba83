// Start, re-reading, the selection lists, the editor and the end of the program.

#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QSignalBlocker>
#include <QTabWidget>

#include "app/FicEdi.h"
#include "app/LumbraGb.h"
#include "app/LumbraMnu.h"
#include "app/device_actions.h"
#include "platform/qt/qt_codepage.h"

namespace lumbra {
namespace {

template <typename Row>
void FillList(QComboBox* list, const std::vector<Row>& tab) {
    // The program's own filling is not a choice of the user: the list's events stay quiet and the
    // caller raises the one click the selection of the first entry stands for.
    const QSignalBlocker quiet(list);
    list->clear();
    for (std::size_t r = 1; r < tab.size(); ++r)
        list->addItem(platform::FromCp1252(tab[r].txi));
    // An empty list keeps no selection, which is row 0: nothing selected.
    if (list->count() > 0) list->setCurrentIndex(0);
}

std::int16_t SelectedRow(const QComboBox* list) {
    return static_cast<std::int16_t>(list->currentIndex() + 1);
}

}  // namespace

void LumbraMnu::Form_Load() {
    frmAct = 1;
    ui.laTit->setText(QString());
    ui.tbOpc->setCurrentIndex(0);
    for (int i = kFirstSparePage; i < ui.tbOpc->count(); ++i) {
        ui.tbOpc->setTabEnabled(i, false);
        ui.tbOpc->setTabVisible(i, false);
    }
    LumbraMsgLpz();
    LumbraIni();
    LumbraOpcIni();
    ui.txLigTst->setText(platform::FromCp1252(kLigTstPreset));
    ui.laLigRes->setText(QString());
    ui.txDisTxm->setText(platform::FromCp1252(kDisTxmPreset));
    ui.txCnvDec->setText(QString());
    ui.txCnvHex->setText(QString());
    frmAct = 0;
    LumbraOpcPrp();
}

void LumbraMnu::Form_Unload() {
    // A running cycle ends at its next step; the channels close under it now and its remaining
    // operations find no channel to use.
    cycleStop_ = true;
    LumbraFim();
}

void LumbraMnu::LumbraOpcIni() {
    const LumbraGbState& g = Gb();
    FillList(ui.cbLigPor, g.ligTab);
    FillList(ui.cbGavAbr, g.gavTab);
    cbGavAbr_Click();
    FillList(ui.cbDisPor, g.disTab);
    FillList(ui.cbDisCmd, g.cmdTab);
}

void LumbraMnu::LumbraOpcPrp() {
    LumbraGbState& g = Gb();
    g.ligIdx = SelectedRow(ui.cbLigPor);
    g.gavIdx = SelectedRow(ui.cbGavAbr);
    g.disIdx = SelectedRow(ui.cbDisPor);
    ligTx = platform::ToCp1252(ui.txLigTst->text());
}

void LumbraMnu::mnuLerCfg_Click() {
    // The cycle writes into its drawer row between sends: the table must stay while it runs. The
    // entry is disabled then; this covers a trigger that does not pass through the menu.
    if (cycleRunning_) return;
    LumbraIni();
    LumbraOpcIni();
}

void LumbraMnu::mnuTbCfg_Click() {
    FicEdi(Gb().cfgFic, 1);
}

}  // namespace lumbra
