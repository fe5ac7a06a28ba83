#include "app/LumbraMnu.h"

#include <QAction>
#include <QApplication>
#include <QCloseEvent>
#include <QDialog>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>

#include "app/LumbraCnv.h"
#include "platform/qt/qt_codepage.h"
#include "platform/qt/qt_events.h"
#include "platform/qt/qt_stop_signals.h"
#include "util/text/value.h"

namespace lumbra {
namespace {

// The message list shows its newest lines at the bottom of a window of this many lines.
constexpr int kMsgLines = 16;

}  // namespace

LumbraMnu::LumbraMnu(QWidget* parent) : QMainWindow(parent) {
    frmAct = 1;
    ui.setupUi(this);
    frmAct = 0;

    connectEvents();
}

void LumbraMnu::LumbraMsgLpz() {
    ui.lbRes->clear();
}

void LumbraMnu::LumbraMsgJun(const Variant& msg) {
    std::string line;
    VlTx(msg, line);
    ui.lbRes->addItem(platform::FromCp1252(line));
    const int count = ui.lbRes->count();
    if (count > kMsgLines) {
        ui.lbRes->scrollToItem(ui.lbRes->item(count - kMsgLines), QAbstractItemView::PositionAtTop);
    }
    platform::ProcessPendingEvents();
}

void LumbraMnu::LumbraMsgSep(std::int16_t nl) {
    for (int i = 0; i < nl; ++i)
        LumbraMsgJun(Variant(""));
}

void LumbraMnu::closeOnStopSignals() {
    platform::OnStopSignal(this, [this] {
        if (auto* box = qobject_cast<QDialog*>(QApplication::activeModalWidget())) box->reject();
        // Queued: the close runs once the box's own loop has given control back.
        QMetaObject::invokeMethod(
            this, [this] { close(); }, Qt::QueuedConnection);
    });
}

void LumbraMnu::closeEvent(QCloseEvent* event) {
    if (!unloaded_) {
        unloaded_ = true;
        Form_Unload();
        emit unloading();
    }
    event->accept();
}

void LumbraMnu::txCnvDec_Change() {
    if (frmAct == 1) return;
    std::string hx;
    CnvDecHex(platform::ToCp1252(ui.txCnvDec->text()), hx);
    frmAct = 1;
    ui.txCnvHex->setText(platform::FromCp1252(hx));
    frmAct = 0;
}

void LumbraMnu::txCnvHex_Change() {
    if (frmAct == 1) return;
    std::string tx;
    CnvHexDec(platform::ToCp1252(ui.txCnvHex->text()), tx);
    frmAct = 1;
    ui.txCnvDec->setText(platform::FromCp1252(tx));
    frmAct = 0;
}

}  // namespace lumbra
