#pragma once
// The printer's paper roll: each printed line in the printer's font, bold and double-size text
// marked, the cuts drawn across the paper. The newest line is kept in sight.

#include <QTextEdit>

#include "simulator/device_event.h"

namespace lumbra::sim {

class PaperView : public QTextEdit {
  public:
    explicit PaperView(QWidget* parent = nullptr);
    void print(const DeviceEvent& line);
    void cut(bool partial);
    int printedLines() const { return lines_; }

  private:
    void append(const QString& html);
    int lines_ = 0;
};

}  // namespace lumbra::sim
