#pragma once
// What each event of the main window decides, with no toolkit: which rows are selected, which text
// goes where, what is sent, when the drawer cycle stops. Both windows (Qt on Linux, the Windows API
// on Windows) own one, forward their controls' events to the handlers below and show what it tells
// their LumbraMnuView.

#include <cstdint>
#include <string>

#include "util/text/variant.h"

namespace lumbra {

class LumbraMnuView;

class LumbraMnuForm {
  public:
    explicit LumbraMnuForm(LumbraMnuView& view) : view_(view) {}

    // 1 while the program itself writes into controls: the conversion boxes then ignore their
    // change, so a conversion never converts back into the box being edited.
    std::int16_t frmAct = 0;
    // The connection-test text as last taken from txLigTst (Windows-1252).
    std::string ligTx;

    // The start sequence: channels, configuration, lists, preset texts, selected rows. Runs before
    // the window is shown; a parameter file that cannot be opened ends the program here.
    void Form_Load();
    // The window is going: a running cycle ends at its next step and the channels close.
    void Form_Unload();

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

    // Empties the message list.
    void LumbraMsgLpz();
    // Appends msg as one line (text unchanged, a number in plain decimal), keeps the last lines in
    // view, then lets pending window events run: other handlers may run inside this call.
    void LumbraMsgJun(const Variant& msg);
    // Appends nl empty lines.
    void LumbraMsgSep(std::int16_t nl = 0);

    // The events.
    void txCnvDec_Change();
    void txCnvHex_Change();
    void cmLigTst_Click();
    // A new selection shows its command; so does picking the mode already selected, which brings
    // back the row's own command after a cycle left the last substituted one in the box.
    void cbGavAbr_Click();
    void cmGavAbr_Click();
    // Starts the cycle, or, while it runs (the button then reads "Parar"), stops it before its
    // next send.
    void cmAbrCic_Click();
    void cmDisExe_Click();
    void cmDisTxm_Click();
    // Refused while the cycle runs: it writes into its drawer row between sends.
    void mnuLerCfg_Click();
    void mnuTbCfg_Click();
    void cmFim_Click();
    void mnuFim_Click();

    // True while the drawer cycle runs.
    bool cycleRunning() const { return cycleRunning_; }

  private:
    LumbraMnuView& view_;
    bool cycleRunning_ = false;
    bool cycleStop_ = false;
};

}  // namespace lumbra
