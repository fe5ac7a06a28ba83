#include "simulator/display_decoder.h"

#include <algorithm>

#include "simulator/command_bytes.h"

namespace lumbra::sim {
namespace {

constexpr int kLastRow = kDisplayRows - 1;
constexpr int kLastColumn = kDisplayColumns - 1;
// ESC Q A/B takes the row's text up to CR, and a row shows 20 of its characters. A line command
// that does not end, its CR lost, must not swallow what comes after it: the CR has to be among the
// first kLongestLineCommand bytes of the command. When it is not, the command is given up
// whatever way its bytes arrived, whole or in pieces: ESC Q A (or B) is reported unknown and the
// bytes after it are decoded afresh, as characters at the cursor.
constexpr std::size_t kLongestLineCommand = 3 + 2 * kDisplayColumns;

}  // namespace

DeviceEvent DisplayDecoder::screen() const {
    DeviceEvent e;
    e.device = Device::Display;
    e.kind = EventKind::Screen;
    for (int r = 0; r < kDisplayRows; ++r) {
        for (unsigned char cell : cells_[static_cast<std::size_t>(r)])
            e.lines[static_cast<std::size_t>(r)] += CharacterUtf8(cell, charset_);
    }
    e.row = row_ + 1;
    e.column = column_ + 1;
    e.cursorVisible = cursorVisible_;
    return e;
}

std::size_t DisplayDecoder::decodeOne(std::string_view in) {
    const unsigned char b = At(in, 0);
    switch (b) {
        case kBs:
            left();
            return 1;
        case kHt:
            right();
            return 1;
        case kLf:
            down();
            return 1;
        case kHom:
            moveTo(0, 0);
            return 1;
        case kClr:
            clear();
            return 1;
        case kCr:
            moveTo(row_, 0);
            return 1;
        case kCan:  // CAN: clears the cursor's row
            cells_[static_cast<std::size_t>(row_)].fill(' ');
            moveTo(row_, 0);
            return 1;
        case kEsc:
            return decodeEsc(in);
        case kUs:
            return decodeUs(in);
        default:
            break;
    }
    if (b < 0x20 || b == 0x7F) return skip(in.substr(0, 1));
    write(b);
    return 1;
}

std::size_t DisplayDecoder::decodeEsc(std::string_view in) {
    if (in.size() < 2) return 0;
    auto unknown = [&](std::size_t n) { return skip(in.substr(0, n)); };
    switch (At(in, 1)) {
        case '@':  // ESC @: initialise
            clear();
            verticalScroll_ = false;
            cursorVisible_ = true;
            return 2;
        case 0x11:  // ESC DC1: overwrite mode
            verticalScroll_ = false;
            return 2;
        case 0x12:  // ESC DC2: vertical scroll mode
            verticalScroll_ = true;
            return 2;
        case 'Q':  // ESC Q A text CR, ESC Q B text CR: a whole row
            return writeLine(in);
        case 'l': {  // ESC l x y: cursor to column x, row y
            if (in.size() < 4) return 0;
            const int x = At(in, 2);
            const int y = At(in, 3);
            if (x < 1 || x > kDisplayColumns || y < 1 || y > kDisplayRows) return unknown(4);
            moveTo(y - 1, x - 1);
            return 4;
        }
        case '_': {  // ESC _ n: cursor shown (1) or hidden (0)
            if (in.size() < 3) return 0;
            const unsigned char n = At(in, 2);
            if (n > 1) return unknown(3);
            cursorVisible_ = n == 1;
            return 3;
        }
        case '[': {
            if (in.size() < 3) return 0;
            switch (At(in, 2)) {
                case 'A':
                    up();
                    return 3;  // up
                case 'B':
                    down();
                    return 3;  // down
                case 'C':
                    right();
                    return 3;  // right
                case 'D':
                    left();
                    return 3;  // left
                case 'H':
                    moveTo(0, 0);
                    return 3;  // home
                case 'L':
                    moveTo(row_, 0);
                    return 3;  // leftmost
                case 'R':
                    moveTo(row_, kLastColumn);
                    return 3;  // rightmost
                case 'K':
                    moveTo(kLastRow, 0);
                    return 3;  // bottom
                default:
                    return unknown(3);
            }
        }
        default:
            return unknown(2);
    }
}

std::size_t DisplayDecoder::decodeUs(std::string_view in) {
    if (in.size() < 2) return 0;
    switch (At(in, 1)) {
        case kLf:
            up();
            return 2;  // US LF: up
        case kCr:
            moveTo(row_, kLastColumn);
            return 2;  // US CR: rightmost
        default:
            return skip(in.substr(0, 2));
    }
}

std::size_t DisplayDecoder::writeLine(std::string_view in) {
    if (in.size() < 3) return 0;
    const unsigned char which = At(in, 2);
    if (which != 'A' && which != 'B') return skip(in.substr(0, 3));
    // Only the command's own bytes are looked at: a CR further on belongs to what follows.
    const std::size_t cr = in.substr(0, kLongestLineCommand).find(static_cast<char>(kCr), 3);
    if (cr == std::string_view::npos) {
        if (in.size() < kLongestLineCommand) return 0;
        return skip(in.substr(0, 3));
    }
    auto& cells = cells_[which == 'A' ? 0U : 1U];
    cells.fill(' ');
    const std::string_view text = in.substr(3, std::min<std::size_t>(cr - 3, kDisplayColumns));
    std::copy(text.begin(), text.end(), cells.begin());
    return cr + 1;
}

void DisplayDecoder::write(unsigned char byte) {
    if (wrapPending_) right();
    cells_[static_cast<std::size_t>(row_)][static_cast<std::size_t>(column_)] = byte;
    if (column_ < kLastColumn)
        ++column_;
    else
        wrapPending_ = true;
}

void DisplayDecoder::right() {
    wrapPending_ = false;
    if (column_ < kLastColumn) {
        ++column_;
        return;
    }
    column_ = 0;
    down();
}

void DisplayDecoder::left() {
    wrapPending_ = false;
    if (column_ > 0) {
        --column_;
    } else if (row_ > 0) {
        --row_;
        column_ = kLastColumn;
    }
}

void DisplayDecoder::down() {
    wrapPending_ = false;
    if (row_ < kLastRow) {
        ++row_;
    } else if (verticalScroll_) {
        cells_[0] = cells_[1];
        cells_[1].fill(' ');
    } else {
        row_ = 0;
    }
}

void DisplayDecoder::up() {
    wrapPending_ = false;
    if (row_ > 0) {
        --row_;
    } else if (verticalScroll_) {
        cells_[1] = cells_[0];
        cells_[0].fill(' ');
    } else {
        row_ = kLastRow;
    }
}

void DisplayDecoder::moveTo(int row, int column) {
    wrapPending_ = false;
    row_ = row;
    column_ = column;
}

void DisplayDecoder::clear() {
    for (auto& row : cells_)
        row.fill(' ');
    moveTo(0, 0);
}

}  // namespace lumbra::sim
