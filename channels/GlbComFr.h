#pragma once
// The hidden form that serial-port controls live on. Element pSer(can) of its control array is the
// port control of channel can; element 1 exists from the start and also serves the form's serial
// test panel. The form also has a one-button modem test on its own control MSComm1. The channel
// module creates it and never shows it; the panel and the modem test work once it is shown.
//
// The controls are public, as on any form: the program and its tests reach them by name.

#include <QWidget>
#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "channels/serial_port_control.h"
#include "util/text/variant.h"

class QFrame;
class QGroupBox;
class QLabel;
class QLineEdit;
class QListWidget;
class QPushButton;
class QStatusBar;

namespace lumbra {

class GlbComFr : public QWidget {
  public:
    // Creates the form with its controls and runs its load handler; the form stays hidden.
    explicit GlbComFr(QWidget* parent = nullptr);
    ~GlbComFr() override;

    // Public procedure of the form; it changes nothing.
    void FrmPrep(const std::string& modo, std::vector<Variant>& par);

    // Adds element index to pSer as a copy of element 1's settings; an existing element is left
    // as it is.
    void loadPSer(std::int16_t index);
    bool hasPSer(std::int16_t index) const;
    // Element index, which must have been loaded (element 1 always is).
    SerialPortControl& pSer(std::int16_t index);
    SerialPortControl& MSComm1() { return *msComm1_; }
    // Closes every open port of the form, the modem test's included.
    void closeAllPorts();

    // Event handlers, connected to their controls.
    void cmPserAbr_Click();
    void cmPserFec_Click();
    void cmPserEnv_Click();
    void cmPserRec_Click();
    void Command1_Click();
    void cmFim_Click();
    void pSer_OnComm(std::int16_t index);

    QListWidget* lbRec = nullptr;
    QPushButton* Command1 = nullptr;
    QGroupBox* frPser = nullptr;
    QLabel* spPsrerNum = nullptr;
    QLineEdit* txPserNum = nullptr;
    QLineEdit* txPserOpc = nullptr;
    QPushButton* cmPserAbr = nullptr;
    QPushButton* cmPserFec = nullptr;
    QPushButton* cmPserEnv = nullptr;
    QPushButton* cmPserRec = nullptr;
    QLineEdit* txCom = nullptr;
    QFrame* rod = nullptr;
    QPushButton* cmFim = nullptr;
    QLabel* lbsup = nullptr;
    QStatusBar* StatusBar1 = nullptr;

  private:
    void buildControls();
    void Form_Load();
    // The panel and the modem test stop at the first step the port refuses and say why in a box;
    // the form stays open.
    bool panelStep(bool done, const SerialPortControl& control, const std::string& fn);

    std::map<std::int16_t, std::unique_ptr<SerialPortControl>> pSer_;
    std::unique_ptr<SerialPortControl> msComm1_;
};

}  // namespace lumbra
