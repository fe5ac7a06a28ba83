#include "simulator/window/display_view.h"

#include <QFont>
#include <QPainter>

namespace lumbra::sim {
namespace {

constexpr int kCellWidth = 22;
constexpr int kCellHeight = 34;
constexpr int kGap = 3;
constexpr int kMargin = 14;

const QColor kGlass(16, 24, 22);
const QColor kUnlit(28, 44, 40);
const QColor kLit(120, 255, 214);

}  // namespace

DisplayView::DisplayView(QWidget* parent) : QWidget(parent) {
    screen_.kind = EventKind::Screen;
    screen_.device = Device::Display;
    for (std::string& line : screen_.lines)
        line.assign(kDisplayColumns, ' ');
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

void DisplayView::showScreen(const DeviceEvent& screen) {
    screen_ = screen;
    update();
}

QSize DisplayView::sizeHint() const {
    return {2 * kMargin + kDisplayColumns * (kCellWidth + kGap) - kGap,
            2 * kMargin + kDisplayRows * (kCellHeight + kGap) - kGap};
}

void DisplayView::paintEvent(QPaintEvent*) {
    QPainter p(this);
    p.setRenderHint(QPainter::Antialiasing);
    p.setPen(QPen(QColor(60, 60, 60), 2));
    p.setBrush(kGlass);
    p.drawRoundedRect(rect().adjusted(1, 1, -1, -1), 8, 8);

    QFont font(QStringLiteral("Liberation Mono"));
    font.setStyleHint(QFont::Monospace);
    font.setPixelSize(26);
    font.setBold(true);
    p.setFont(font);
    for (int r = 0; r < kDisplayRows; ++r) {
        const QString row = QString::fromStdString(screen_.lines[static_cast<std::size_t>(r)]);
        for (int c = 0; c < kDisplayColumns; ++c) {
            const QRect cell(kMargin + c * (kCellWidth + kGap), kMargin + r * (kCellHeight + kGap),
                             kCellWidth, kCellHeight);
            p.fillRect(cell, kUnlit);
            p.setPen(kLit);
            if (c < row.size()) p.drawText(cell, Qt::AlignCenter, row.mid(c, 1));
            if (screen_.cursorVisible && r + 1 == screen_.row && c + 1 == screen_.column)
                p.fillRect(cell.left() + 2, cell.bottom() - 3, cell.width() - 4, 3, kLit);
        }
    }
}

}  // namespace lumbra::sim
