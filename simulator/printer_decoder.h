#pragma once
// The receipt printer with its cash drawer: reads the ESC/POS bytes a parameter file sends and
// reports what the printer would do. Printable bytes are characters of the printer's code page
// (PC437 after power-on); a line is printed at LF. A command it does not know is reported with
// its bytes (a run of them in one event) and decoding goes on after it.
//
// Incremental: bytes may arrive in pieces of any size; a command cut between two calls waits for
// its remaining bytes, so the events are the same as for one call. No command is longer than
// ten bytes, and a line holds 48 columns at most, so whatever arrives the printer keeps little.

#include <string>
#include <string_view>
#include <vector>

#include "simulator/code_page.h"
#include "simulator/command_reader.h"
#include "simulator/device_event.h"

namespace lumbra::sim {

// Characters per line of an 80 mm roll in the standard font; a longer line goes on the next one.
inline constexpr std::size_t kPrinterColumns = 48;

class PrinterDecoder : public CommandReader {
  public:
    PrinterDecoder() : CommandReader(Device::Printer) {}

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

    std::size_t decodeOne(std::string_view in) override;
    std::size_t decodeEsc(std::string_view in);
    std::size_t decodeGs(std::string_view in);
    std::size_t decodeDle(std::string_view in);
    // The n bytes of a command the printer skips; 0 while in holds fewer.
    std::size_t unknown(std::string_view in, std::size_t n);
    void print(unsigned char byte);
    void printLine();
    void reset();

    CodePage page_ = CodePage::Pc437;
    Mode mode_;
    std::string text_;
    std::vector<Mode> modes_;  // one per character of text_
    std::size_t columns_ = 0;
};

}  // namespace lumbra::sim
