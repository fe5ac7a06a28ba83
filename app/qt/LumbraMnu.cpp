#include "app/qt/LumbraMnu.h"

#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QCloseEvent>
#include <QComboBox>
#include <QDialog>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QSignalBlocker>
#include <QTabWidget>
#include <stdexcept>

#include "platform/qt/qt_codepage.h"
#include "platform/qt/qt_stop_signals.h"

namespace lumbra {
namespace {

// The message list shows its newest lines at the bottom of a window of this many lines.
constexpr int kMsgLines = 16;

}  // namespace

LumbraMnu::LumbraMnu(QWidget* parent) : QMainWindow(parent) {
    ui.setupUi(this);
    connectEvents();
}

QObject* LumbraMnu::control(const char* ctl) const {
    QObject* found = findChild<QObject*>(QString::fromLatin1(ctl));
    if (found == nullptr) throw std::logic_error(std::string("no control ") + ctl);
    return found;
}

std::string LumbraMnu::text(const char* ctl) const {
    auto* box = qobject_cast<QLineEdit*>(control(ctl));
    return box != nullptr ? platform::ToCp1252(box->text()) : std::string();
}

void LumbraMnu::setText(const char* ctl, const std::string& text) {
    const QString t = platform::FromCp1252(text);
    QObject* c = control(ctl);
    if (auto* box = qobject_cast<QLineEdit*>(c)) box->setText(t);
    if (auto* label = qobject_cast<QLabel*>(c)) label->setText(t);
    if (auto* button = qobject_cast<QAbstractButton*>(c)) button->setText(t);
}

void LumbraMnu::fillList(const char* ctl, const std::vector<std::string>& entries) {
    auto* list = qobject_cast<QComboBox*>(control(ctl));
    const QSignalBlocker quiet(list);
    list->clear();
    for (const std::string& e : entries)
        list->addItem(platform::FromCp1252(e));
    if (list->count() > 0) list->setCurrentIndex(0);
}

int LumbraMnu::selected(const char* ctl) const {
    return qobject_cast<QComboBox*>(control(ctl))->currentIndex();
}

void LumbraMnu::setEnabled(const char* ctl, bool enabled) {
    QObject* c = control(ctl);
    if (auto* action = qobject_cast<QAction*>(c)) action->setEnabled(enabled);
    if (auto* widget = qobject_cast<QWidget*>(c)) widget->setEnabled(enabled);
}

void LumbraMnu::showPage(int n) {
    ui.tbOpc->setCurrentIndex(n);
}

void LumbraMnu::retirePage(int n) {
    ui.tbOpc->setTabEnabled(n, false);
    ui.tbOpc->setTabVisible(n, false);
}

void LumbraMnu::clearMessages() {
    ui.lbRes->clear();
}

void LumbraMnu::addMessage(const std::string& line) {
    ui.lbRes->addItem(platform::FromCp1252(line));
    const int count = ui.lbRes->count();
    if (count > kMsgLines) {
        ui.lbRes->scrollToItem(ui.lbRes->item(count - kMsgLines), QAbstractItemView::PositionAtTop);
    }
}

void LumbraMnu::closeWindow() {
    close();
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
        form.Form_Unload();
        emit unloading();
    }
    event->accept();
}

}  // namespace lumbra
