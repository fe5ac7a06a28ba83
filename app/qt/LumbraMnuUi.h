#pragma once
// The controls of the main window on Qt, built from the layout table (app/window_layout.h): every
// control carries its layout name as object name and sits at its layout position (15 twips to the
// pixel). Other
// parts of the program reach the controls through these pointers, the way uic-generated classes
// expose theirs.

class QAction;
class QComboBox;
class QGroupBox;
class QLabel;
class QLineEdit;
class QListWidget;
class QMainWindow;
class QMenu;
class QPushButton;
class QStatusBar;
class QTabWidget;
class QWidget;

namespace lumbra {

struct LumbraMnuUi {
    QLabel* laTit = nullptr;
    QTabWidget* tbOpc = nullptr;

    // Page "Opções": connection test and base conversion.
    QGroupBox* frOpcSai = nullptr;
    QLabel* spLigPor = nullptr;
    QComboBox* cbLigPor = nullptr;
    QLineEdit* txLigTst = nullptr;
    QPushButton* cmLigTst = nullptr;
    QLabel* laLigRes = nullptr;
    QGroupBox* frCnv = nullptr;
    QLabel* spCnvDec = nullptr;
    QLineEdit* txCnvDec = nullptr;
    QLabel* SSPanel1 = nullptr;
    QLineEdit* txCnvHex = nullptr;

    // Page "Gaveta": cash-drawer opening.
    QGroupBox* grGav = nullptr;
    QLabel* spGav = nullptr;
    QComboBox* cbGavAbr = nullptr;
    QLineEdit* txGavAbr = nullptr;
    QPushButton* cmAbrCic = nullptr;
    QPushButton* cmGavAbr = nullptr;

    // Page "Display": customer-display commands.
    QGroupBox* frDis = nullptr;
    QLabel* spDisPor = nullptr;
    QComboBox* cbDisPor = nullptr;
    QLabel* spDisCmd = nullptr;
    QComboBox* cbDisCmd = nullptr;
    QPushButton* cmDisExe = nullptr;
    QLabel* spDisTxm = nullptr;
    QLineEdit* txDisTxm = nullptr;
    QPushButton* cmDisTxm = nullptr;

    // The message list, on the sixth page, which the user cannot reach.
    QListWidget* lbRes = nullptr;

    QGroupBox* frCmd = nullptr;
    QPushButton* cmFim = nullptr;
    QStatusBar* sBar = nullptr;

    QMenu* mnuFic = nullptr;
    QAction* mnuLerCfg = nullptr;
    QAction* mnuFim = nullptr;
    QMenu* mnuTb = nullptr;
    QAction* mnuTbCfg = nullptr;

    // Builds every control into window, which gets a fixed size around the 634 x 408 client area.
    void setupUi(QMainWindow* window);
};

}  // namespace lumbra
