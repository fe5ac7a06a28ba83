#pragma once
// The pole display as it looks: two rows of twenty cells, light characters on dark glass, the
// cursor underlined when it is shown.

#include <QWidget>

#include "simulator/device_event.h"

namespace lumbra::sim {

class DisplayView : public QWidget {
  public:
    explicit DisplayView(QWidget* parent = nullptr);
    void showScreen(const DeviceEvent& screen);
    const DeviceEvent& screen() const { return screen_; }
    QSize sizeHint() const override;

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    DeviceEvent screen_;
};

}  // namespace lumbra::sim
