#pragma once
// The receipt printer with its cash drawer: reads the ESC/POS bytes a parameter file sends and
// reports what the printer would do. Printable bytes are characters of the printer's code page
// (PC437 after power-on); a line is printed at LF. A command it does not know is reported with
// its bytes and decoding goes on after it.
//
// Incremental: bytes may arrive in pieces of any size; a command cut between two calls waits for
// its remaining bytes, so the events are the same as for one call.

#include <string>
#include <string_view>
#include <vector>

#include "simulator/code_page.h"
#include "simulator/device_event.h"

namespace lumbra::sim {

// Characters per line of an 80 mm roll in the standard font; a longer line goes on the next one.
inline constexpr std::size_t kPrinterColumns = 48;

class PrinterDecoder {
  public:
    std::vector<DeviceEvent> feed(std::string_view bytes);

    CodePage codePage() const { return page_; }
    // Characters received since the last printed line, UTF-8.
    const std::string& pendingText() const { return text_; }

  private:
    struct Mode {
        bool bold = false;
        bool doubleWidth = false;
        bool doubleHeight = false;
        friend bool operator==(const Mode&, const Mode&) = default;
    };

    // Decodes the command at the start of in; returns the bytes it took, 0 when incomplete.
    std::size_t decodeOne(std::string_view in, std::vector<DeviceEvent>& out);
    std::size_t decodeEsc(std::string_view in, std::vector<DeviceEvent>& out);
    std::size_t decodeGs(std::string_view in, std::vector<DeviceEvent>& out);
    std::size_t decodeDle(std::string_view in, std::vector<DeviceEvent>& out);
    void print(unsigned char byte, std::vector<DeviceEvent>& out);
    void printLine(std::vector<DeviceEvent>& out);
    void reset();

    std::string pending_;  // an incomplete command
    CodePage page_ = CodePage::Pc437;
    Mode mode_;
    std::string text_;
    std::vector<Mode> modes_;  // one per character of text_
    std::size_t columns_ = 0;
};

// The event for bytes a device skipped.
DeviceEvent UnknownBytes(Device device, std::string_view bytes);

}  // namespace lumbra::sim
