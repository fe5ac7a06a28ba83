#pragma once
// The cash drawer: drawn open for the length of each pulse, with the count of pulses and the pin
// and times of the last one.

#include <QWidget>

#include "simulator/device_event.h"

class QTimer;

namespace lumbra::sim {

class DrawerView : public QWidget {
  public:
    explicit DrawerView(QWidget* parent = nullptr);
    void pulse(const DeviceEvent& drawer);
    int pulses() const { return pulses_; }
    bool isOpen() const { return open_; }
    QSize sizeHint() const override;

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    QTimer* closer_;
    bool open_ = false;
    int pulses_ = 0;
    QString last_;
};

}  // namespace lumbra::sim
