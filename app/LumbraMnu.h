#pragma once
// The program's only window: the device pages, the base converter and the message list. Device
// actions and the start sequence are connected to the controls (ui) from outside; the window itself
// owns the base conversion, the message list and closing.

#include <QMainWindow>
#include <cstdint>
#include <string>

#include "app/LumbraMnuUi.h"
#include "util/text/variant.h"

class QCloseEvent;

namespace lumbra {

class LumbraMnu : public QMainWindow {
    Q_OBJECT

  public:
    explicit LumbraMnu(QWidget* parent = nullptr);

    LumbraMnuUi ui;

    // 1 while the program itself writes into controls: the conversion boxes then ignore their
    // change, so a conversion never converts back into the box being edited.
    std::int16_t frmAct = 0;
    // The connection-test text as last taken from txLigTst (Windows-1252).
    std::string ligTx;

    // Empties the message list.
    void LumbraMsgLpz();
    // Appends msg as one line (text unchanged, a number in plain decimal), keeps the last 16 lines
    // in view, then lets pending window events run: other handlers may run inside this call.
    void LumbraMsgJun(const Variant& msg);
    // Appends nl empty lines.
    void LumbraMsgSep(std::int16_t nl = 0);

  signals:
    // The window is closing, by "Terminar", the menu or the frame; the program's shutdown belongs
    // here. Emitted once; the close is never refused.
    void unloading();

  protected:
    void closeEvent(QCloseEvent* event) override;

  private:
    void txCnvDec_Change();
    void txCnvHex_Change();

    bool unloaded_ = false;
};

}  // namespace lumbra
