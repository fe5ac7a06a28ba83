#pragma once
// The program's only window: the device pages, the base converter and the message list. Its events
// start the program (Form_Load), run the device actions on the rows selected in its lists, re-read
// the configuration and end the program when it closes.

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

    // The start sequence: channels, configuration, lists, preset texts, selected rows. Runs before
    // the window is shown; a parameter file that cannot be opened ends the program here.
    void Form_Load();

    // Fills the four selection lists from the configuration tables and selects their first
    // entries (which shows the first drawer command).
    void LumbraOpcIni();
    // Takes the selected list positions into Gb().ligIdx, gavIdx, disIdx and txLigTst into ligTx.
    void LumbraOpcPrp();

    // The device actions of the buttons, without their busy pointer.
    void LumbraLigTst();
    void LumbraGavAbr();
    void LumbraDisExe();
    void LumbraDisVer(const std::string& tx);

    // From now on Ctrl+C, SIGTERM and SIGHUP close the window as "Terminar" does, once the event
    // loop hears of them: a box on the screen is dismissed first and the boxes that follow go to
    // standard error, so nothing waits for an answer. A platform::StopSignalCatcher must live.
    void closeOnStopSignals();

    // True while the drawer cycle runs ("Ciclo" then reads "Parar").
    bool cycleRunning() const { return cycleRunning_; }

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
    void connectEvents();
    void txCnvDec_Change();
    void txCnvHex_Change();

    void cmLigTst_Click();
    void cbGavAbr_Click();
    void cmGavAbr_Click();
    void cmAbrCic_Click();
    void cmDisExe_Click();
    void cmDisTxm_Click();
    void mnuLerCfg_Click();
    void mnuTbCfg_Click();
    void Form_Unload();

    bool unloaded_ = false;
    bool cycleRunning_ = false;
    bool cycleStop_ = false;
};

}  // namespace lumbra
