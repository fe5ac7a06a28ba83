#include "simulator/printer_decoder.h"

#include <array>
#include <utility>

#include "simulator/command_bytes.h"

namespace lumbra::sim {
namespace {

// Parameter counts of commands the printer skips without acting on them, so that their
// parameters are not taken for text.
int SkippedEscParameters(unsigned char c) {
    switch (c) {
        case ' ':
        case '-':
        case '3':
        case 'G':
        case 'J':
        case 'M':
        case 'R':
        case 'U':
        case 'V':
        case 'a':
        case 'd':
        case 'r':
        case '{':
        case 'T':
            return 1;
        case '$':
        case 'c':
            return 2;
        default:
            return 0;
    }
}

int SkippedGsParameters(unsigned char c) {
    switch (c) {
        case '!':
        case 'B':
        case 'H':
        case 'I':
        case 'a':
        case 'f':
        case 'h':
        case 'r':
        case 'w':
            return 1;
        case 'L':
        case 'P':
        case 'W':
            return 2;
        default:
            return 0;
    }
}

DeviceEvent Drawer(int pin, int onMs, int offMs) {
    DeviceEvent e;
    e.device = Device::Printer;
    e.kind = EventKind::Drawer;
    e.pin = pin;
    e.onMs = onMs;
    e.offMs = offMs;
    return e;
}

}  // namespace

std::size_t PrinterDecoder::unknown(std::string_view in, std::size_t n) {
    return in.size() < n ? 0 : skip(in.substr(0, n));
}

std::size_t PrinterDecoder::decodeOne(std::string_view in) {
    const unsigned char b = At(in, 0);
    switch (b) {
        case kLf:
            printLine();
            return 1;
        case kCr:
            // The line is printed at LF; CR alone moves nothing on a receipt printer.
            return 1;
        case kEsc:
            return decodeEsc(in);
        case kGs:
            return decodeGs(in);
        case kDle:
            return decodeDle(in);
        default:
            break;
    }
    if (b < 0x20 || b == 0x7F) {
        // FS and the other control bytes take one parameter byte or none; the control byte alone
        // is reported, and whatever follows is decoded afresh.
        return skip(in.substr(0, 1));
    }
    print(b);
    return 1;
}

std::size_t PrinterDecoder::decodeEsc(std::string_view in) {
    if (in.size() < 2) return 0;
    const unsigned char c = At(in, 1);
    switch (c) {
        case '@':  // ESC @: initialise, forgetting the unprinted text
            reset();
            return 2;
        case 't': {  // ESC t n: character code table
            if (in.size() < 3) return 0;
            switch (At(in, 2)) {
                case 0:
                    page_ = CodePage::Pc437;
                    return 3;
                case 2:
                    page_ = CodePage::Pc850;
                    return 3;
                case 3:
                    page_ = CodePage::Pc860;
                    return 3;
                case 16:
                    page_ = CodePage::Windows1252;
                    return 3;
                default:
                    return unknown(in, 3);
            }
        }
        case '!': {  // ESC ! n: print modes at once
            if (in.size() < 3) return 0;
            const unsigned char n = At(in, 2);
            mode_.bold = (n & 0x08) != 0;
            mode_.doubleHeight = (n & 0x10) != 0;
            mode_.doubleWidth = (n & 0x20) != 0;
            return 3;
        }
        case 'E':  // ESC E n: emphasised on or off
            if (in.size() < 3) return 0;
            mode_.bold = (At(in, 2) & 0x01) != 0;
            return 3;
        case 'p': {  // ESC p m t1 t2: drawer pulse, t1 on and t2 off in units of 2 ms
            if (in.size() < 5) return 0;
            const unsigned char m = At(in, 2);
            int pin = 0;
            if (m == 0 || m == '0') pin = 2;
            if (m == 1 || m == '1') pin = 5;
            if (pin == 0) return unknown(in, 5);
            report(Drawer(pin, At(in, 3) * 2, At(in, 4) * 2));
            return 5;
        }
        default:
            return unknown(in, 2 + static_cast<std::size_t>(SkippedEscParameters(c)));
    }
}

std::size_t PrinterDecoder::decodeGs(std::string_view in) {
    if (in.size() < 2) return 0;
    const unsigned char c = At(in, 1);
    if (c != 'V') return unknown(in, 2 + static_cast<std::size_t>(SkippedGsParameters(c)));

    // GS V m (m = 0/48 full, 1/49 partial) and GS V m n (m = 65 full, 66 partial, after feeding
    // n lines). What is left unprinted goes out before the cut.
    if (in.size() < 3) return 0;
    const unsigned char m = At(in, 2);
    std::size_t length = 3;
    bool partial = false;
    if (m == 0 || m == '0') {
        partial = false;
    } else if (m == 1 || m == '1') {
        partial = true;
    } else if (m == 65 || m == 66) {
        if (in.size() < 4) return 0;
        partial = m == 66;
        length = 4;
    } else {
        return unknown(in, 3);
    }
    if (!text_.empty()) printLine();
    DeviceEvent e;
    e.device = Device::Printer;
    e.kind = EventKind::Cut;
    e.partialCut = partial;
    report(std::move(e));
    return length;
}

std::size_t PrinterDecoder::decodeDle(std::string_view in) {
    if (in.size() < 2) return 0;
    const unsigned char c = At(in, 1);
    if (c == 0x04 || c == 0x05) return unknown(in, 3);  // DLE EOT n, DLE ENQ n: status requests
    if (c != kDc4) return unknown(in, 2);
    if (in.size() < 3) return 0;
    switch (At(in, 2)) {
        case 1: {  // DLE DC4 1 m t: pulse on pin m, on and off t × 100 ms
            if (in.size() < 5) return 0;
            const unsigned char m = At(in, 3);
            const unsigned char t = At(in, 4);
            if (m > 1 || t < 1 || t > 8) return unknown(in, 5);
            report(Drawer(m == 0 ? 2 : 5, t * 100, t * 100));
            return 5;
        }
        case 2:  // DLE DC4 2 a b: power off
            return unknown(in, 5);
        case 8:  // DLE DC4 8 d1..d7: clear the buffers
            return unknown(in, 10);
        default:
            return unknown(in, 3);
    }
}

void PrinterDecoder::print(unsigned char byte) {
    const std::size_t width = mode_.doubleWidth ? 2 : 1;
    if (columns_ + width > kPrinterColumns) printLine();
    text_ += CharacterUtf8(byte, page_);
    modes_.push_back(mode_);
    columns_ += width;
}

void PrinterDecoder::printLine() {
    DeviceEvent e;
    e.device = Device::Printer;
    e.kind = EventKind::Line;
    e.text = std::move(text_);
    for (std::size_t i = 0; i < modes_.size(); ++i) {
        const Mode& m = modes_[i];
        if (m == Mode{}) continue;
        if (!e.spans.empty()) {
            TextSpan& last = e.spans.back();
            if (last.start + last.length == i && m == modes_[last.start]) {
                ++last.length;
                continue;
            }
        }
        e.spans.push_back({i, 1, m.bold, m.doubleWidth, m.doubleHeight});
    }
    report(std::move(e));
    text_.clear();
    modes_.clear();
    columns_ = 0;
}

void PrinterDecoder::reset() {
    page_ = CodePage::Pc437;
    mode_ = Mode{};
    text_.clear();
    modes_.clear();
    columns_ = 0;
}

}  // namespace lumbra::sim
