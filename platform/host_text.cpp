#include "platform/host_text.h"

#include <array>
#include <cstddef>
#include <cstdint>

namespace lumbra::platform {
namespace {

// Code points of bytes 0x80-0x9F; the undefined ones keep their own number.
constexpr std::array<char32_t, 32> kHighControls = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

char32_t CodePointOf(unsigned char byte) {
    if (byte >= 0x80 && byte <= 0x9F) return kHighControls[static_cast<std::size_t>(byte - 0x80)];
    return byte;
}

// The byte of a code point, or '?' when Windows-1252 has none.
char ByteOf(char32_t cp) {
    if (cp < 0x80 || (cp >= 0xA0 && cp <= 0xFF)) return static_cast<char>(cp);
    for (std::size_t i = 0; i < kHighControls.size(); ++i) {
        if (kHighControls[i] == cp) return static_cast<char>(0x80 + i);
    }
    return '?';
}

void AppendUtf8(std::string& out, char32_t cp) {
    if (cp < 0x80) {
        out += static_cast<char>(cp);
    } else if (cp < 0x800) {
        out += static_cast<char>(0xC0 | (cp >> 6));
        out += static_cast<char>(0x80 | (cp & 0x3F));
    } else {
        out += static_cast<char>(0xE0 | (cp >> 12));
        out += static_cast<char>(0x80 | ((cp >> 6) & 0x3F));
        out += static_cast<char>(0x80 | (cp & 0x3F));
    }
}

// Decodes one UTF-8 sequence at text[i]; returns its length, 0 when the bytes there are not one.
std::size_t DecodeUtf8(std::string_view text, std::size_t i, char32_t& cp) {
    const auto lead = static_cast<unsigned char>(text[i]);
    std::size_t len = 0;
    char32_t min = 0;
    if (lead >= 0xC2 && lead <= 0xDF) {
        len = 2, cp = lead & 0x1Fu, min = 0x80;
    } else if (lead >= 0xE0 && lead <= 0xEF) {
        len = 3, cp = lead & 0x0Fu, min = 0x800;
    } else if (lead >= 0xF0 && lead <= 0xF4) {
        len = 4, cp = lead & 0x07u, min = 0x10000;
    } else {
        return 0;
    }
    if (i + len > text.size()) return 0;
    for (std::size_t k = 1; k < len; ++k) {
        const auto next = static_cast<unsigned char>(text[i + k]);
        if ((next & 0xC0) != 0x80) return 0;
        cp = (cp << 6) | (next & 0x3Fu);
    }
    if (cp < min || cp > 0x10FFFF || (cp >= 0xD800 && cp <= 0xDFFF)) return 0;
    return len;
}

}  // namespace

std::string ToHostText(std::string_view text) {
    std::string out;
    out.reserve(text.size());
    for (char c : text)
        AppendUtf8(out, CodePointOf(static_cast<unsigned char>(c)));
    return out;
}

std::string FromHostText(std::string_view text) {
    std::string out;
    out.reserve(text.size());
    std::size_t i = 0;
    while (i < text.size()) {
        if (static_cast<unsigned char>(text[i]) < 0x80) {
            out += text[i++];
            continue;
        }
        char32_t cp = 0;
        const std::size_t len = DecodeUtf8(text, i, cp);
        if (len == 0) {
            out += text[i++];
        } else {
            out += ByteOf(cp);
            i += len;
        }
    }
    return out;
}

}  // namespace lumbra::platform
