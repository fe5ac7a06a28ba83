#pragma once
// The one place where the program's Windows-1252 bytes meet Qt's Unicode strings: window texts,
// message boxes, file and port names. The table is our own, so the result does not depend on the
// codecs a Qt build happens to carry.

#include <QString>
#include <QStringView>
#include <string>
#include <string_view>

namespace lumbra::platform {

// Every byte becomes one character. The five bytes Windows-1252 leaves undefined (0x81, 0x8D, 0x8F,
// 0x90, 0x9D) become the control characters of the same number, so nothing is lost.
QString FromCp1252(std::string_view bytes);

// Every character becomes one byte; a character Windows-1252 cannot hold becomes "?". Returns false
// when that happened, so the caller can refuse or warn.
bool ToCp1252(QStringView text, std::string& bytes);

// The same, for callers that accept "?" in place of what cannot be held.
std::string ToCp1252(QStringView text);

}  // namespace lumbra::platform
