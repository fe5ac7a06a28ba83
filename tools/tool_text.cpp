#include "tools/tool_text.h"

#include "platform/cp1252_table.h"
#include "platform/host_text.h"
#include "tools/tool_console.h"

namespace lumbra::ctl {
namespace {

// The status line on show, in characters, so that a shorter one can blank out its rest.
std::size_t statusLineWidth = 0;
bool statusLineShowing = false;

constexpr char32_t kNotUtf8 = 0xFFFFFFFF;

// The character of the UTF-8 sequence at text[i], and its length in bytes; kNotUtf8 (one byte
// long) when the bytes there are no sequence, overlong and surrogate forms included.
char32_t DecodeAt(std::string_view text, std::size_t i, std::size_t& length) {
    const auto lead = static_cast<unsigned char>(text[i]);
    length = 1;
    if (lead < 0x80) return lead;
    std::size_t len = 0;
    char32_t cp = 0;
    char32_t least = 0;
    if (lead >= 0xC2 && lead <= 0xDF) {
        len = 2, cp = lead & 0x1Fu, least = 0x80;
    } else if (lead >= 0xE0 && lead <= 0xEF) {
        len = 3, cp = lead & 0x0Fu, least = 0x800;
    } else if (lead >= 0xF0 && lead <= 0xF4) {
        len = 4, cp = lead & 0x07u, least = 0x10000;
    } else {
        return kNotUtf8;
    }
    if (i + len > text.size()) return kNotUtf8;
    for (std::size_t k = 1; k < len; ++k) {
        const auto next = static_cast<unsigned char>(text[i + k]);
        if ((next & 0xC0) != 0x80) return kNotUtf8;
        cp = (cp << 6) | (next & 0x3Fu);
    }
    if (cp < least || cp > 0x10FFFF || (cp >= 0xD800 && cp <= 0xDFFF)) return kNotUtf8;
    length = len;
    return cp;
}

// Calls each(character) for every character of utf8, kNotUtf8 for every byte that is not UTF-8.
template <typename Each>
void ForEachCharacter(std::string_view utf8, Each each) {
    for (std::size_t i = 0, length = 0; i < utf8.size(); i += length)
        each(DecodeAt(utf8, i, length));
}

}  // namespace

bool ArgumentToCp1252(std::string_view utf8, std::string& bytes) {
    bytes.clear();
    bool whole = true;
    ForEachCharacter(utf8, [&](char32_t cp) {
        const int b = cp == kNotUtf8 ? -1 : platform::Cp1252Byte(cp);
        if (b < 0)
            whole = false;
        else
            bytes += static_cast<char>(static_cast<unsigned char>(b));
    });
    return whole;
}

std::string UnencodableCharacters(std::string_view utf8) {
    std::string list;
    ForEachCharacter(utf8, [&](char32_t cp) {
        // A byte that is no UTF-8 stands for the replacement character, as a decoder shows it.
        if (cp == kNotUtf8) cp = 0xFFFD;
        if (platform::Cp1252Byte(cp) >= 0) return;
        char name[16];
        std::snprintf(name, sizeof name, "U+%04X", static_cast<unsigned>(cp));
        if (!list.empty()) list += ' ';
        list += name;
    });
    return list;
}

void PrintLine(std::FILE* out, std::string_view cp1252) {
    if (out == stderr) EndStatusLine();
    WriteText(out, platform::ToHostText(cp1252) + "\n");
}

void ShowStatusLine(std::string_view utf8) {
    // Back to the start of the line, the new text, then blanks over what the old one had beyond
    // it: no terminal escape is needed, so a Windows console shows it the same way.
    std::size_t width = 0;
    ForEachCharacter(utf8, [&width](char32_t) { ++width; });
    std::string line = "\r" + std::string(utf8);
    if (statusLineShowing && statusLineWidth > width) {
        line.append(statusLineWidth - width, ' ');
        line.append("\r" + std::string(utf8));
    }
    WriteText(stderr, line);
    statusLineWidth = width;
    statusLineShowing = true;
}

void EndStatusLine() {
    if (!statusLineShowing) return;
    statusLineShowing = false;
    statusLineWidth = 0;
    WriteText(stderr, "\n");
}

}  // namespace lumbra::ctl
