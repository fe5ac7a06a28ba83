#pragma once
// One virtual device on its pseudo-terminal: the port, the decoder of its kind and the check of
// the line settings. The window and lumbractl both drive devices through this.

#include <memory>
#include <string>
#include <vector>

#include "simulator/display_decoder.h"
#include "simulator/line_settings.h"
#include "simulator/printer_decoder.h"
#include "simulator/pty/virtual_port.h"

namespace lumbra::sim {

class VirtualDevice {
  public:
    // charset applies to a display; a printer starts in PC437 and follows ESC t.
    VirtualDevice(Device kind, const LineSettings& expected,
                  CodePage charset = CodePage::Windows1252);

    Device kind() const { return kind_; }
    const VirtualPort& port() const { return port_; }

    // Reads what arrived, a piece of at most kReadChunk bytes: the settings event first when the
    // line is set otherwise than expected (read before the bytes, while the sender still holds
    // its settings), then the decoder's events in order. A sender that goes on writing is served
    // by one call after another, each event handed on as its bytes are read.
    std::vector<DeviceEvent> pump();
    // At the end of a burst: the unknown bytes it ended with, then the display's screen, when
    // bytes reached it since the last call.
    std::vector<DeviceEvent> endBurst();

  private:
    CommandReader& decoder();

    Device kind_;
    VirtualPort port_;
    SettingsWatch watch_;
    PrinterDecoder printer_;
    DisplayDecoder display_;
    bool changed_ = false;
};

}  // namespace lumbra::sim
