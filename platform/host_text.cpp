#include "platform/host_text.h"

#include "platform/cp1252_table.h"
#include "util/text/utf8.h"

namespace lumbra::platform {

std::string ToHostText(std::string_view text) {
    std::string out;
    out.reserve(text.size());
    for (char c : text)
        AppendUtf8(out, Cp1252Char(static_cast<unsigned char>(c)));
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
            // A character Windows-1252 lacks becomes "?".
            const int byte = Cp1252Byte(cp);
            out += byte < 0 ? '?' : static_cast<char>(byte);
            i += len;
        }
    }
    return out;
}

}  // namespace lumbra::platform
