#pragma once
// The base converter behind the two conversion boxes of the main window, kept free of the window so
// that a command-line tool gives the same answers. Texts are Windows-1252 bytes.

#include <string>

namespace lumbra {

// The text every failed conversion answers.
inline constexpr const char* kCnvErro = "Erro";

// Decimal text to hexadecimal text. The whole text must be one number (blanks only around it, an
// optional sign, digits with an optional "." part, an optional "E" exponent); it is rounded half to
// even and must fit 32 signed bits. Upper-case digits without leading zeros, a negative number as
// its 32-bit two's complement ("-1" gives "FFFFFFFF"); anything else gives "Erro".
void CnvDecHex(const std::string& tx, std::string& hx);

// Hexadecimal text to decimal text. Read as the program reads "&H" numbers: blanks are skipped,
// digits are taken up to the first other character, no digit is 0. Up to FFFF the value is a
// 16-bit two's complement ("8000" gives "-32768"), up to FFFFFFFF a 32-bit one; more than 32 bits
// of value gives "Erro".
void CnvHexDec(const std::string& hx, std::string& tx);

}  // namespace lumbra
