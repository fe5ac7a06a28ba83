#include "platform/win32/wide_text.h"

#include "platform/cp1252_table.h"

namespace lumbra::platform {

std::wstring ToWide(std::string_view text) {
    std::wstring wide;
    wide.reserve(text.size());
    for (const char c : text)
        wide.push_back(static_cast<wchar_t>(Cp1252Char(static_cast<unsigned char>(c))));
    return wide;
}

std::string FromWide(std::wstring_view text, bool* whole) {
    std::string bytes;
    bytes.reserve(text.size());
    bool all = true;
    for (std::size_t i = 0; i < text.size(); ++i) {
        char32_t c = static_cast<char16_t>(text[i]);
        if (c >= 0xD800 && c <= 0xDBFF && i + 1 < text.size()) {
            const char32_t low = static_cast<char16_t>(text[i + 1]);
            if (low >= 0xDC00 && low <= 0xDFFF) {
                c = 0x10000 + ((c - 0xD800) << 10) + (low - 0xDC00);
                ++i;
            }
        }
        const int b = Cp1252Byte(c);
        all = all && b >= 0;
        bytes.push_back(b >= 0 ? static_cast<char>(static_cast<unsigned char>(b)) : '?');
    }
    if (whole != nullptr) *whole = all;
    return bytes;
}

}  // namespace lumbra::platform
