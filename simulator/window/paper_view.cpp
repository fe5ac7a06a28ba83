#include "simulator/window/paper_view.h"

#include <QFontMetrics>
#include <QScrollBar>

#include "simulator/printer_decoder.h"

namespace lumbra::sim {

PaperView::PaperView(QWidget* parent) : QTextEdit(parent) {
    setReadOnly(true);
    setLineWrapMode(QTextEdit::NoWrap);
    // The roll keeps its newest lines (and cuts) only: older ones fall off the top.
    document()->setMaximumBlockCount(kPaperLines);
    QFont font(QStringLiteral("Liberation Mono"));
    font.setStyleHint(QFont::Monospace);
    font.setPixelSize(12);
    setFont(font);
    setStyleSheet(QStringLiteral("QTextEdit { background: #fbfaf4; color: #202020; }"));
    // The roll is as wide as a line of the printer.
    const int columns = static_cast<int>(kPrinterColumns);
    setMinimumWidth(QFontMetrics(font).horizontalAdvance(QString(columns, QLatin1Char('M'))) + 28);
}

void PaperView::print(const DeviceEvent& line) {
    const QString text = QString::fromStdString(line.text);
    QString html;
    int at = 0;
    for (const TextSpan& s : line.spans) {
        const auto start = static_cast<int>(s.start);
        const auto length = static_cast<int>(s.length);
        html += text.mid(at, start - at).toHtmlEscaped();
        QString style;
        if (s.bold) style += QStringLiteral("font-weight:bold;");
        if (s.doubleHeight || s.doubleWidth) style += QStringLiteral("font-size:20px;");
        if (s.doubleWidth) style += QStringLiteral("letter-spacing:4px;");
        html += QStringLiteral("<span style=\"%1\">%2</span>")
                    .arg(style, text.mid(start, length).toHtmlEscaped());
        at = start + length;
    }
    html += text.mid(at).toHtmlEscaped();
    ++lines_;
    append(html.isEmpty() ? QStringLiteral("&nbsp;") : html);
}

void PaperView::cut(bool partial) {
    const QString mark = partial ? QStringLiteral("\u2702 - - - - corte parcial - - - -")
                                 : QStringLiteral("\u2702 - - - - - - corte - - - - - -");
    append(QStringLiteral("<span style=\"color:#8a8a8a\">%1</span>").arg(mark));
}

void PaperView::append(const QString& html) {
    QTextEdit::append(QStringLiteral("<span style=\"white-space:pre\">%1</span>").arg(html));
}

void PaperView::showNewest() {
    verticalScrollBar()->setValue(verticalScrollBar()->maximum());
}

}  // namespace lumbra::sim
