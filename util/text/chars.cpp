#include "util/text/chars.h"

namespace lumbra {

char UpperChar(char c) {
    const auto b = static_cast<unsigned char>(c);
    if (b >= 'a' && b <= 'z') return static_cast<char>(b - 0x20);
    // Latin-1 letters: the capital is 0x20 below, except the division sign and y-diaeresis.
    if (b >= 0xE0 && b <= 0xFE && b != 0xF7) return static_cast<char>(b - 0x20);
    switch (b) {
        case 0x9A:
            return static_cast<char>(0x8A);  // s caron
        case 0x9C:
            return static_cast<char>(0x8C);  // oe
        case 0x9E:
            return static_cast<char>(0x8E);  // z caron
        case 0xFF:
            return static_cast<char>(0x9F);  // y diaeresis
        default:
            return c;
    }
}

std::string UpperCase(std::string_view tx) {
    std::string out(tx);
    for (char& c : out)
        c = UpperChar(c);
    return out;
}

std::string_view TrimBlanks(std::string_view tx) {
    const auto first = tx.find_first_not_of(' ');
    if (first == std::string_view::npos) return {};
    const auto last = tx.find_last_not_of(' ');
    return tx.substr(first, last - first + 1);
}

}  // namespace lumbra
