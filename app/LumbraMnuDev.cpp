// The device actions of the three pages.

#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>

#include "app/LumbraGb.h"
#include "app/LumbraMnu.h"
#include "app/device_actions.h"
#include "platform/qt/qt_busy_pointer.h"
#include "platform/qt/qt_codepage.h"
#include "platform/qt/qt_events.h"
#include "platform/stop_signals.h"

namespace lumbra {

void LumbraMnu::cmLigTst_Click() {
    const platform::BusyPointer busy;
    LumbraLigTst();
}

void LumbraMnu::LumbraLigTst() {
    LumbraOpcPrp();
    SendConnectionTest(ligTx);
}

void LumbraMnu::cbGavAbr_Click() {
    LumbraOpcPrp();
    ui.txGavAbr->setText(platform::FromCp1252(TableRow(Gb().gavTab, Gb().gavIdx).vtx));
}

void LumbraMnu::cmGavAbr_Click() {
    const platform::BusyPointer busy;
    LumbraGavAbr();
}

void LumbraMnu::LumbraGavAbr() {
    LumbraOpcPrp();
    SendDrawerCommand();
}

void LumbraMnu::cmAbrCic_Click() {
    // While the cycle runs its button stops it; the stop takes effect before the next send.
    if (cycleRunning_) {
        cycleStop_ = true;
        return;
    }
    cycleRunning_ = true;
    cycleStop_ = false;
    ui.cmAbrCic->setText(QStringLiteral("Parar"));
    ui.mnuLerCfg->setEnabled(false);
    CycleHooks hooks;
    hooks.shown = [this](const std::string& t) {
        ui.txGavAbr->setText(platform::FromCp1252(t));
        platform::ProcessPendingEvents();
    };
    // A stop signal ends the cycle at once; the window closes as soon as its event arrives.
    hooks.stopped = [this] { return cycleStop_ || platform::StopRequested(); };
    hooks.send = [this] { LumbraGavAbr(); };
    hooks.over = [this](const std::string& t) { ui.txGavAbr->setText(platform::FromCp1252(t)); };
    RunDrawerCycle(Gb().gavIdx, hooks);
    ui.cmAbrCic->setText(QStringLiteral("Ciclo"));
    ui.mnuLerCfg->setEnabled(true);
    cycleRunning_ = false;
}

void LumbraMnu::cmDisExe_Click() {
    const platform::BusyPointer busy;
    LumbraDisExe();
}

void LumbraMnu::LumbraDisExe() {
    LumbraOpcPrp();
    LumbraDisVer(DisplayCommand(static_cast<std::int16_t>(ui.cbDisCmd->currentIndex() + 1)));
}

void LumbraMnu::cmDisTxm_Click() {
    const platform::BusyPointer busy;
    LumbraOpcPrp();
    LumbraDisVer(platform::ToCp1252(ui.txDisTxm->text()));
}

void LumbraMnu::LumbraDisVer(const std::string& tx) {
    SendDisplayText(tx);
}

}  // namespace lumbra
