#pragma once
// The customer pole display, two rows of twenty cells, driven by the CD5220 command set: reads the
// bytes it receives and keeps the screen they make. Characters are written at the cursor in the
// display's character set. Commands it does not know are reported with their bytes (a run of them
// in one event) and decoding goes on after them.
//
// The cursor stays on the last cell after the twentieth character of a row; the next character
// first moves on: from row 1 to row 2, and from row 2 back to row 1 in overwrite mode (ESC DC1,
// the default) or, in vertical scroll mode (ESC DC2), to a fresh row 2 after row 2 moved up.
//
// Incremental like the printer: a command cut between two calls decodes as in one, and what it
// keeps between calls is one command at most (ESC Q A, 40 characters and CR).

#include <array>
#include <string>
#include <string_view>
#include <vector>

#include "simulator/code_page.h"
#include "simulator/command_reader.h"
#include "simulator/device_event.h"

namespace lumbra::sim {

class DisplayDecoder : public CommandReader {
  public:
    explicit DisplayDecoder(CodePage charset = CodePage::Windows1252)
        : CommandReader(Device::Display), charset_(charset) {
        clear();
    }

    // The screen as it is now; feed() and finish() give only the commands it skipped.
    DeviceEvent screen() const;
    bool verticalScroll() const { return verticalScroll_; }

  private:
    std::size_t decodeOne(std::string_view in) override;
    std::size_t decodeEsc(std::string_view in);
    std::size_t decodeUs(std::string_view in);
    std::size_t writeLine(std::string_view in);
    void write(unsigned char byte);
    void right();
    void left();
    void down();
    void up();
    void moveTo(int row, int column);
    void clear();

    CodePage charset_;
    std::array<std::array<unsigned char, kDisplayColumns>, kDisplayRows> cells_{};
    int row_ = 0;  // from 0
    int column_ = 0;
    bool wrapPending_ = false;
    bool verticalScroll_ = false;
    bool cursorVisible_ = true;
};

}  // namespace lumbra::sim
