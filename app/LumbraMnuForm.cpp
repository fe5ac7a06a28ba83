#include "app/LumbraMnuForm.h"

#include <vector>

#include "app/FicEdi.h"
#include "app/LumbraCnv.h"
#include "app/LumbraGb.h"
#include "app/LumbraMnuView.h"
#include "app/device_actions.h"
#include "app/window_layout.h"
#include "platform/busy_pointer.h"
#include "platform/pending_events.h"
#include "platform/stop_signals.h"
#include "util/text/value.h"

namespace lumbra {
namespace {

template <typename Row>
void FillList(LumbraMnuView& view, const char* list, const std::vector<Row>& tab) {
    std::vector<std::string> names;
    for (std::size_t r = 1; r < tab.size(); ++r)
        names.push_back(tab[r].txi);
    view.fillList(list, names);
}

// The list's position as a table row: an empty list keeps no selection, which is row 0.
std::int16_t SelectedRow(const LumbraMnuView& view, const char* list) {
    return static_cast<std::int16_t>(view.selected(list) + 1);
}

}  // namespace

void LumbraMnuForm::Form_Load() {
    frmAct = 1;
    view_.setText("laTit", "");
    view_.showPage(0);
    for (int i = kFirstSparePage; i < static_cast<int>(LumbraMnuPages().size()); ++i)
        view_.retirePage(i);
    LumbraMsgLpz();
    LumbraIni();
    LumbraOpcIni();
    view_.setText("txLigTst", kLigTstPreset);
    view_.setText("laLigRes", "");
    view_.setText("txDisTxm", kDisTxmPreset);
    view_.setText("txCnvDec", "");
    view_.setText("txCnvHex", "");
    frmAct = 0;
    LumbraOpcPrp();
}

void LumbraMnuForm::Form_Unload() {
    // A running cycle ends at its next step; the channels close under it now and its remaining
    // operations find no channel to use.
    cycleStop_ = true;
    LumbraFim();
}

void LumbraMnuForm::LumbraOpcIni() {
    const LumbraGbState& g = Gb();
    FillList(view_, "cbLigPor", g.ligTab);
    FillList(view_, "cbGavAbr", g.gavTab);
    cbGavAbr_Click();
    FillList(view_, "cbDisPor", g.disTab);
    FillList(view_, "cbDisCmd", g.cmdTab);
}

void LumbraMnuForm::LumbraOpcPrp() {
    LumbraGbState& g = Gb();
    g.ligIdx = SelectedRow(view_, "cbLigPor");
    g.gavIdx = SelectedRow(view_, "cbGavAbr");
    g.disIdx = SelectedRow(view_, "cbDisPor");
    ligTx = view_.text("txLigTst");
}

void LumbraMnuForm::LumbraLigTst() {
    LumbraOpcPrp();
    SendConnectionTest(ligTx);
}

void LumbraMnuForm::LumbraGavAbr() {
    LumbraOpcPrp();
    SendDrawerCommand();
}

void LumbraMnuForm::LumbraDisExe() {
    LumbraOpcPrp();
    LumbraDisVer(DisplayCommand(SelectedRow(view_, "cbDisCmd")));
}

void LumbraMnuForm::LumbraDisVer(const std::string& tx) {
    SendDisplayText(tx);
}

void LumbraMnuForm::LumbraMsgLpz() {
    view_.clearMessages();
}

void LumbraMnuForm::LumbraMsgJun(const Variant& msg) {
    std::string line;
    VlTx(msg, line);
    view_.addMessage(line);
    platform::ProcessPendingEvents();
}

void LumbraMnuForm::LumbraMsgSep(std::int16_t nl) {
    for (int i = 0; i < nl; ++i)
        LumbraMsgJun(Variant(""));
}

void LumbraMnuForm::txCnvDec_Change() {
    if (frmAct == 1) return;
    std::string hx;
    CnvDecHex(view_.text("txCnvDec"), hx);
    frmAct = 1;
    view_.setText("txCnvHex", hx);
    frmAct = 0;
}

void LumbraMnuForm::txCnvHex_Change() {
    if (frmAct == 1) return;
    std::string tx;
    CnvHexDec(view_.text("txCnvHex"), tx);
    frmAct = 1;
    view_.setText("txCnvDec", tx);
    frmAct = 0;
}

void LumbraMnuForm::cmLigTst_Click() {
    const platform::BusyPointer busy;
    LumbraLigTst();
}

void LumbraMnuForm::cbGavAbr_Click() {
    LumbraOpcPrp();
    view_.setText("txGavAbr", TableRow(Gb().gavTab, Gb().gavIdx).vtx);
}

void LumbraMnuForm::cmGavAbr_Click() {
    const platform::BusyPointer busy;
    LumbraGavAbr();
}

void LumbraMnuForm::cmAbrCic_Click() {
    if (cycleRunning_) {
        cycleStop_ = true;
        return;
    }
    cycleRunning_ = true;
    cycleStop_ = false;
    view_.setText("cmAbrCic", "Parar");
    view_.setEnabled("mnuLerCfg", false);
    CycleHooks hooks;
    hooks.shown = [this](const std::string& t) {
        view_.setText("txGavAbr", t);
        platform::ProcessPendingEvents();
    };
    // A stop signal ends the cycle at once; the window closes as soon as its event arrives.
    hooks.stopped = [this] { return cycleStop_ || platform::StopRequested(); };
    hooks.send = [this] { LumbraGavAbr(); };
    hooks.over = [this](const std::string& t) { view_.setText("txGavAbr", t); };
    RunDrawerCycle(Gb().gavIdx, hooks);
    view_.setText("cmAbrCic", "Ciclo");
    view_.setEnabled("mnuLerCfg", true);
    cycleRunning_ = false;
}

void LumbraMnuForm::cmDisExe_Click() {
    const platform::BusyPointer busy;
    LumbraDisExe();
}

void LumbraMnuForm::cmDisTxm_Click() {
    const platform::BusyPointer busy;
    LumbraOpcPrp();
    LumbraDisVer(view_.text("txDisTxm"));
}

void LumbraMnuForm::mnuLerCfg_Click() {
    // The entry is disabled during the cycle; this covers a trigger that does not pass through
    // the menu.
    if (cycleRunning_) return;
    LumbraIni();
    LumbraOpcIni();
}

void LumbraMnuForm::mnuTbCfg_Click() {
    FicEdi(Gb().cfgFic, 1);
}

void LumbraMnuForm::cmFim_Click() {
    view_.closeWindow();
}

void LumbraMnuForm::mnuFim_Click() {
    view_.closeWindow();
}

}  // namespace lumbra
