#pragma once
// The window of the host form GlbComFr: caption "Controlo de comunicacões", the serial test panel
// on element 1 of pSer, the modem test on MSComm1, and "Terminar". Built when the form is to be
// shown; nothing in the program shows it, the panel and the modem test work once it is shown.
//
// The controls are public, as on any form: the program and its tests reach them by name.

#include <QWidget>
#include <string>

class QFrame;
class QGroupBox;
class QLabel;
class QLineEdit;
class QListWidget;
class QPushButton;
class QStatusBar;

namespace lumbra {

class GlbComFr;
class SerialPortControl;

class GlbComFrUi : public QWidget {
  public:
    // Builds the controls over form's ports and runs the load handler; the window stays hidden
    // until shown.
    explicit GlbComFrUi(GlbComFr& form, QWidget* parent = nullptr);

    void cmPserAbr_Click();
    void cmPserFec_Click();
    void cmPserEnv_Click();
    void cmPserRec_Click();
    void Command1_Click();
    void cmFim_Click();

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

    GlbComFr& form_;
};

}  // namespace lumbra
