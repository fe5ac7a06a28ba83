#include "util/files/name_index.h"

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace lumbra {

namespace {

constexpr std::int16_t kMaxPosition = 32000;
constexpr char kMark = '\0';
// Kind, position high byte, position low byte and the opening mark come before the name.
constexpr std::size_t kHeaderSize = 4;

std::int16_t byteCode(char c) {
    return static_cast<std::int16_t>(static_cast<unsigned char>(c));
}

std::int16_t decodePosition(char high, char low) {
    const int value = 256 * byteCode(high) + byteCode(low);
    return value <= INT16_MAX ? static_cast<std::int16_t>(value) : std::int16_t{0};
}

}  // namespace

void IdxPosCod(std::int16_t pos, std::string& cod, std::int16_t& ok) {
    if (pos < 1 || pos > kMaxPosition) {
        ok = 0;
        cod.clear();
        return;
    }
    ok = 1;
    const auto value = static_cast<unsigned>(pos);
    cod.assign({static_cast<char>(value / 256U), static_cast<char>(value % 256U)});
}

void IdxPosDec(const std::string& cod, std::int16_t& pos) {
    pos = cod.size() < 2 ? std::int16_t{0} : decodePosition(cod[0], cod[1]);
}

void IdxAdd(std::string& idx, const std::string& nome, std::int16_t tip, std::int16_t pos,
            std::int16_t& ok) {
    ok = 0;
    if (tip < 1 || tip > 255) return;
    if (nome.find(kMark) != std::string::npos) return;
    std::string cod;
    IdxPosCod(pos, cod, ok);
    if (ok != 1) return;

    idx += static_cast<char>(tip);
    idx += cod;
    idx += kMark;
    idx += nome;
    idx += kMark;
}

void IdxCon(const std::string& idx, const std::string& nome, std::int16_t& tip, std::int16_t& pos) {
    tip = 0;
    pos = 0;
    // Walking entry by entry, rather than searching the text for 0 + name + 0, keeps a match from
    // starting inside a position code (a zero high byte, say) and reporting a neighbour's bytes.
    const std::string_view text(idx);
    std::size_t start = 0;
    // An entry needs its four header bytes and its closing mark.
    while (text.size() - start > kHeaderSize) {
        if (text[start + 3] != kMark) return;
        const std::size_t nameStart = start + kHeaderSize;
        const std::size_t close = text.find(kMark, nameStart);
        if (close == std::string_view::npos) return;
        if (text.substr(nameStart, close - nameStart) == nome) {
            tip = byteCode(text[start]);
            pos = decodePosition(text[start + 1], text[start + 2]);
            return;
        }
        start = close + 1;
    }
}

}  // namespace lumbra
