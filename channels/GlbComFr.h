#pragma once
// The host form that serial-port controls live on. Element pSer(can) of its control array is the
// port control of channel can; element 1 exists from the start and also serves the form's serial
// test panel. The form also has a one-button modem test on its own control MSComm1. The channel
// module creates it and never shows it.
//
// The controls a user sees (the test panel, the modem test button) belong to the form's window,
// GlbComFrUi, built only when someone wants to show the form: the ports themselves need no window
// system, so a program that never shows the form loads none.

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "channels/serial_port_control.h"
#include "util/text/variant.h"

namespace lumbra {

class GlbComFr {
  public:
    GlbComFr();
    ~GlbComFr();
    GlbComFr(const GlbComFr&) = delete;
    GlbComFr& operator=(const GlbComFr&) = delete;

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

    // Receive event of element index: whatever arrived is taken and dropped.
    void pSer_OnComm(std::int16_t index);

  private:
    std::map<std::int16_t, std::unique_ptr<SerialPortControl>> pSer_;
    std::unique_ptr<SerialPortControl> msComm1_;
};

}  // namespace lumbra
