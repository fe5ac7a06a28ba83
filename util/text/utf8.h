#pragma once
// UTF-8, the text of the host's files, terminals and command lines, one character at a time. The
// program's own text stays Windows-1252; these serve its crossings (platform/host_text.h) and the
// virtual devices' views.

#include <cstddef>
#include <string>
#include <string_view>

namespace lumbra {

// Appends the UTF-8 bytes of code point cp (at most U+10FFFF).
inline void AppendUtf8(std::string& out, char32_t cp) {
    if (cp < 0x80) {
        out += static_cast<char>(cp);
    } else if (cp < 0x800) {
        out += static_cast<char>(0xC0 | (cp >> 6));
        out += static_cast<char>(0x80 | (cp & 0x3F));
    } else if (cp < 0x10000) {
        out += static_cast<char>(0xE0 | (cp >> 12));
        out += static_cast<char>(0x80 | ((cp >> 6) & 0x3F));
        out += static_cast<char>(0x80 | (cp & 0x3F));
    } else {
        out += static_cast<char>(0xF0 | (cp >> 18));
        out += static_cast<char>(0x80 | ((cp >> 12) & 0x3F));
        out += static_cast<char>(0x80 | ((cp >> 6) & 0x3F));
        out += static_cast<char>(0x80 | (cp & 0x3F));
    }
}

// Decodes the UTF-8 sequence at text[i] into cp; returns its length, 0 when the bytes there are
// not one (overlong forms, surrogates and cut sequences included).
inline std::size_t DecodeUtf8(std::string_view text, std::size_t i, char32_t& cp) {
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

}  // namespace lumbra
