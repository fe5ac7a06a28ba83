#include "simulator/window/drawer_view.h"

#include <QPainter>
#include <QTimer>

namespace lumbra::sim {

DrawerView::DrawerView(QWidget* parent) : QWidget(parent), closer_(new QTimer(this)) {
    closer_->setSingleShot(true);
    QObject::connect(closer_, &QTimer::timeout, this, [this] {
        open_ = false;
        update();
    });
    setMinimumSize(sizeHint());
}

QSize DrawerView::sizeHint() const {
    return {250, 150};
}

void DrawerView::pulse(const DeviceEvent& drawer) {
    ++pulses_;
    last_ = QStringLiteral("pino %1: %2 ms ligado, %3 ms desligado")
                .arg(drawer.pin)
                .arg(drawer.onMs)
                .arg(drawer.offMs);
    // The solenoid holds the latch for the on time; a pulse of 0 ms still shows for a moment.
    open_ = true;
    closer_->start(std::max(drawer.onMs, 1));
    update();
}

void DrawerView::paintEvent(QPaintEvent*) {
    QPainter p(this);
    p.setRenderHint(QPainter::Antialiasing);
    const int w = width();
    // The cabinet, and the drawer sliding out of it when open.
    const QRect cabinet(20, 14, w - 40, 60);
    p.setPen(QPen(QColor(40, 40, 40), 2));
    p.setBrush(QColor(90, 90, 96));
    p.drawRect(cabinet);
    const int out = open_ ? 26 : 0;
    const QRect front(cabinet.left() + 10 - out / 2, cabinet.top() + 16 + out / 2,
                      cabinet.width() - 20 + out, cabinet.height() - 22);
    p.setBrush(open_ ? QColor(214, 170, 60) : QColor(150, 150, 158));
    p.drawRect(front);
    p.setBrush(QColor(40, 40, 40));
    p.drawRect(front.center().x() - 16, front.top() + 8, 32, 6);

    QFont f(QStringLiteral("Liberation Sans"));
    f.setPixelSize(13);
    f.setBold(true);
    p.setFont(f);
    p.setPen(Qt::black);
    p.drawText(QRect(0, 100, w, 18), Qt::AlignCenter,
               open_ ? QStringLiteral("Gaveta aberta") : QStringLiteral("Gaveta fechada"));
    f.setBold(false);
    p.setFont(f);
    p.drawText(QRect(0, 118, w, 16), Qt::AlignCenter, QStringLiteral("Impulsos: %1").arg(pulses_));
    p.drawText(QRect(0, 134, w, 16), Qt::AlignCenter, last_);
}

}  // namespace lumbra::sim
