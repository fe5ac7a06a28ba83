#include "tools/tool_text.h"

#include <QList>
#include <QString>

#include "platform/host_text.h"
#include "platform/qt_codepage.h"

namespace lumbra::ctl {
namespace {

bool statusLineShowing = false;

}  // namespace

bool ArgumentToCp1252(std::string_view utf8, std::string& bytes) {
    // Bytes that are not UTF-8 come back as U+FFFD, which Windows-1252 cannot hold.
    const QString text = QString::fromUtf8(utf8.data(), static_cast<qsizetype>(utf8.size()));
    return platform::ToCp1252(text, bytes);
}

std::string UnencodableCharacters(std::string_view utf8) {
    const QString text = QString::fromUtf8(utf8.data(), static_cast<qsizetype>(utf8.size()));
    std::string list;
    const QList<uint> codePoints = text.toUcs4();
    for (const uint cp : codePoints) {
        const char32_t one = cp;
        std::string byte;
        if (platform::ToCp1252(QString::fromUcs4(&one, 1), byte)) continue;
        char name[16];
        std::snprintf(name, sizeof name, "U+%04X", static_cast<unsigned>(cp));
        if (!list.empty()) list += ' ';
        list += name;
    }
    return list;
}

void PrintLine(std::FILE* out, std::string_view cp1252) {
    if (out == stderr) EndStatusLine();
    const std::string text = platform::ToHostText(cp1252) + "\n";
    std::fwrite(text.data(), 1, text.size(), out);
    std::fflush(out);
}

void ShowStatusLine(std::string_view utf8) {
    // Back to the start of the line, the new text, then the rest of the old one erased.
    const std::string line = "\r" + std::string(utf8) + "\x1B[K";
    std::fwrite(line.data(), 1, line.size(), stderr);
    std::fflush(stderr);
    statusLineShowing = true;
}

void EndStatusLine() {
    if (!statusLineShowing) return;
    statusLineShowing = false;
    std::fputs("\n", stderr);
    std::fflush(stderr);
}

}  // namespace lumbra::ctl
