#include "platform/qt/qt_codepage.h"

#include <array>
#include <cstdint>

namespace lumbra::platform {
namespace {

// Characters of the bytes 0x80 to 0x9F; the undefined ones keep their own number.
constexpr std::array<char16_t, 32> kHighControls = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,  // 0x80
    0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0x008D, 0x017D, 0x008F,  // 0x88
    0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,  // 0x90
    0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178,  // 0x98
};

char16_t CharOfByte(unsigned char b) {
    if (b >= 0x80 && b <= 0x9F) return kHighControls[static_cast<std::size_t>(b - 0x80)];
    return static_cast<char16_t>(b);
}

// The byte of a code point, or -1 when Windows-1252 has none.
int ByteOfChar(char32_t c) {
    if (c < 0x80 || (c >= 0xA0 && c <= 0xFF)) return static_cast<int>(c);
    for (std::size_t i = 0; i < kHighControls.size(); ++i) {
        if (kHighControls[i] == c) return static_cast<int>(0x80 + i);
    }
    return -1;
}

}  // namespace

QString FromCp1252(std::string_view bytes) {
    QString text(static_cast<qsizetype>(bytes.size()), Qt::Uninitialized);
    QChar* out = text.data();
    for (char c : bytes)
        *out++ = QChar(CharOfByte(static_cast<unsigned char>(c)));
    return text;
}

bool ToCp1252(QStringView text, std::string& bytes) {
    bytes.clear();
    bytes.reserve(static_cast<std::size_t>(text.size()));
    bool whole = true;
    const qsizetype n = text.size();
    for (qsizetype i = 0; i < n; ++i) {
        char32_t c = text[i].unicode();
        // A pair of surrogates is one character and gives one byte.
        if (text[i].isHighSurrogate() && i + 1 < n && text[i + 1].isLowSurrogate()) {
            c = QChar::surrogateToUcs4(text[i], text[i + 1]);
            ++i;
        }
        const int b = ByteOfChar(c);
        if (b < 0) {
            bytes.push_back('?');
            whole = false;
        } else {
            bytes.push_back(static_cast<char>(static_cast<unsigned char>(b)));
        }
    }
    return whole;
}

std::string ToCp1252(QStringView text) {
    std::string bytes;
    ToCp1252(text, bytes);
    return bytes;
}

}  // namespace lumbra::platform
