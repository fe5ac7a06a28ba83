#include "platform/qt/qt_codepage.h"

#include "platform/cp1252_table.h"

#include <cstdint>

namespace lumbra::platform {

QString FromCp1252(std::string_view bytes) {
    QString text(static_cast<qsizetype>(bytes.size()), Qt::Uninitialized);
    QChar* out = text.data();
    for (char c : bytes)
        *out++ = QChar(Cp1252Char(static_cast<unsigned char>(c)));
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
        const int b = Cp1252Byte(c);
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
