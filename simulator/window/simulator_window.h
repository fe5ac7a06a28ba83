#pragma once
// The window of lumbra-simulador: the pole display, the cash drawer and the printer's paper as
// the devices would show them, the messages about what they could not understand, and the -COMn
// options that point Lumbra at them, with a button to copy them. The paper and the messages keep
// the last kHistoryLines lines.

#include <QWidget>
#include <memory>
#include <vector>

#include "simulator/pty/virtual_device.h"

class QListWidget;
class QTimer;

namespace lumbra::sim {

class DisplayView;
class DrawerView;
class PaperView;

// The lines the paper roll and the message list keep: the newest ones.
inline constexpr int kHistoryLines = 1000;

class SimulatorWindow : public QWidget {
  public:
    // printer and display are the devices' port numbers in the options; the window serves the
    // devices from the event loop while it lives.
    SimulatorWindow(std::unique_ptr<VirtualDevice> printer, int printerPort,
                    std::unique_ptr<VirtualDevice> display, int displayPort);
    ~SimulatorWindow() override;

    // "-COM1 /dev/pts/5 -COM2 /dev/pts/6".
    const QString& portOptions() const { return options_; }
    DisplayView& displayView() { return *displayView_; }
    DrawerView& drawerView() { return *drawerView_; }
    PaperView& paperView() { return *paperView_; }
    QListWidget& messages() { return *messages_; }

  private:
    void serve(VirtualDevice& device);
    void present(const std::vector<DeviceEvent>& events);
    void present(const DeviceEvent& e);
    void endBurst();

    std::vector<std::unique_ptr<VirtualDevice>> devices_;
    QString options_;
    DisplayView* displayView_;
    DrawerView* drawerView_;
    PaperView* paperView_;
    QListWidget* messages_;
    QTimer* burst_;
};

}  // namespace lumbra::sim
