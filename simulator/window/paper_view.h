#pragma once
// The printer's paper roll: each printed line in the printer's font, bold and double-size text
// marked, the cuts drawn across the paper. The last kPaperLines lines are kept.

#include <QTextEdit>

#include "simulator/device_event.h"

namespace lumbra::sim {

inline constexpr int kPaperLines = 1000;

class PaperView : public QTextEdit {
  public:
    explicit PaperView(QWidget* parent = nullptr);
    void print(const DeviceEvent& line);
    void cut(bool partial);
    // Scrolls to the newest line.
    void showNewest();
    // Lines printed since the start, those that fell off the roll included.
    int printedLines() const { return lines_; }

  private:
    void append(const QString& html);
    int lines_ = 0;
};

}  // namespace lumbra::sim
