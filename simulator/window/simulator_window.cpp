#include "simulator/window/simulator_window.h"

#include <QApplication>
#include <QClipboard>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QSocketNotifier>
#include <QTimer>
#include <QVBoxLayout>

#include "simulator/event_views.h"
#include "simulator/pty/serve.h"
#include "simulator/window/display_view.h"
#include "simulator/window/drawer_view.h"
#include "simulator/window/paper_view.h"

namespace lumbra::sim {
namespace {

QGroupBox* Group(const QString& caption, QWidget* content) {
    auto* box = new QGroupBox(caption);
    // The caption alone is bold: a font set on the box would pass to what it holds.
    box->setStyleSheet(QStringLiteral("QGroupBox { font-weight: bold; }"));
    auto* layout = new QVBoxLayout(box);
    layout->addWidget(content, 0, Qt::AlignHCenter);
    return box;
}

QString Port(int n) {
    return QStringLiteral("COM%1").arg(n);
}

}  // namespace

SimulatorWindow::SimulatorWindow(std::unique_ptr<VirtualDevice> printer, int printerPort,
                                 std::unique_ptr<VirtualDevice> display, int displayPort)
    : displayView_(new DisplayView),
      drawerView_(new DrawerView),
      paperView_(new PaperView),
      messages_(new QListWidget),
      burst_(new QTimer(this)) {
    setWindowTitle(QStringLiteral("Dispositivos virtuais - Lumbra"));
    options_ = QStringLiteral("-%1 %2 -%3 %4")
                   .arg(Port(printerPort), QString::fromStdString(printer->port().path()),
                        Port(displayPort), QString::fromStdString(display->port().path()));

    auto* options = new QLineEdit(options_);
    options->setReadOnly(true);
    auto* copy = new QPushButton(QStringLiteral("Copiar"));
    QObject::connect(copy, &QPushButton::clicked, this,
                     [this] { QApplication::clipboard()->setText(options_); });
    auto* optionsRow = new QHBoxLayout;
    optionsRow->addWidget(new QLabel(QStringLiteral("Op\u00E7\u00F5es para o Lumbra:")));
    optionsRow->addWidget(options, 1);
    optionsRow->addWidget(copy);

    messages_->setWordWrap(true);
    auto* middle = new QHBoxLayout;
    middle->addWidget(Group(QStringLiteral("Gaveta (%1)").arg(Port(printerPort)), drawerView_));
    middle->addWidget(Group(QStringLiteral("Mensagens"), messages_), 1);

    auto* layout = new QVBoxLayout(this);
    layout->addLayout(optionsRow);
    layout->addWidget(
        Group(QStringLiteral("Display do cliente (%1)").arg(Port(displayPort)), displayView_));
    layout->addLayout(middle);
    layout->addWidget(Group(QStringLiteral("Impressora (%1)").arg(Port(printerPort)), paperView_),
                      1);

    devices_.push_back(std::move(printer));
    devices_.push_back(std::move(display));
    for (const auto& device : devices_) {
        auto* notifier =
            new QSocketNotifier(device->port().masterFd(), QSocketNotifier::Read, this);
        VirtualDevice* d = device.get();
        QObject::connect(notifier, &QSocketNotifier::activated, this, [this, d] { serve(*d); });
    }
    burst_->setSingleShot(true);
    burst_->setInterval(static_cast<int>(kBurstQuiet.count()));
    QObject::connect(burst_, &QTimer::timeout, this, [this] { endBurst(); });
    resize(600, 720);
}

SimulatorWindow::~SimulatorWindow() = default;

void SimulatorWindow::serve(VirtualDevice& device) {
    present(device.pump());
    burst_->start();
}

void SimulatorWindow::present(const std::vector<DeviceEvent>& events) {
    if (events.empty()) return;
    for (const DeviceEvent& e : events)
        present(e);
    // Once for the batch: scrolling lays the paper and the list out, which a flood of events
    // must not pay for each line.
    paperView_->showNewest();
    messages_->scrollToBottom();
}

void SimulatorWindow::present(const DeviceEvent& e) {
    switch (e.kind) {
        case EventKind::Line:
            paperView_->print(e);
            break;
        case EventKind::Cut:
            paperView_->cut(e.partialCut);
            break;
        case EventKind::Drawer:
            drawerView_->pulse(e);
            break;
        case EventKind::Screen:
            displayView_->showScreen(e);
            break;
        case EventKind::Unknown:
        case EventKind::Settings:
            messages_->addItem(QString::fromStdString(EventText(e)));
            // The oldest messages go, so that a device fed garbage for hours keeps its window.
            while (messages_->count() > kHistoryLines)
                delete messages_->takeItem(0);
            break;
    }
}

void SimulatorWindow::endBurst() {
    for (const auto& device : devices_)
        present(device->endBurst());
}

}  // namespace lumbra::sim
