#pragma once
// The literal decoder: device commands are written in parameter files as readable text mixing
// plain characters with code lists, "chr$(27,112,0,25,250)" or "bin$(13,10)", and leave the
// program as the exact bytes, one character per code 0..255.

#include <cstdint>
#include <string>
#include <vector>

#include "util/text/variant.h"

namespace lumbra {

// Decodes every "chr$(" ... ")" and "bin$(" ... ")" of tx (markers in lower case only) into the
// characters of its code list; the rest of the text is copied as is. Fields are separated by ","
// and read with NumRead ("&H1B", "1 3" and "65.5" are fine); an empty field is code 0, a trailing
// "," adds nothing, codes outside 0..255 give nothing, and a field that does not fit a 16-bit
// integer repeats the character of the code last stored (code 0 before any). A list without ")"
// runs to the end of the text.
// The one-argument form replaces tx; the others leave tx alone and put the result in sai.
void TxCnvChr(std::string& tx);
void TxCnvChr(const std::string& tx, Variant& sai);
void TxCnvChr(const std::string& tx, std::string& sai);

// Replaces the first occurrence of ant in tx by nov, or every occurrence when modo is exactly "R".
// Nothing happens when nov contains ant (the replacement would never end) or ant is "".
void TxSub(const std::string& modo, std::string& tx, const std::string& ant,
           const std::string& nov);

// Cuts tx at the first whole occurrence of sep: pt = the text before, tx = the text after sep.
// sep "" or not found: pt = tx, tx = "".
void TxSepL(std::string& tx, const std::string& sep, std::string& pt);

// The characters of the codes in lst: a text element is a code list read field by field as in
// TxCnvChr; a numeric element is one code (rounded to a 32-bit integer). Codes outside 0..255 and
// empty or null elements give nothing.
std::string TxChrLst(const std::vector<Variant>& lst);

// Cuts the first field of tx at sep (as TxSep: pt before, tx from one character after sep's
// start; without sep the whole text is the field and tx becomes "") and reads it with NumRead into
// n, converted to n's type. When the number does not fit n, n keeps its value.
void TxNumSep(std::string& tx, const std::string& sep, Variant& n);
void TxNumSep(std::string& tx, const std::string& sep, std::int16_t& n);
void TxNumSep(std::string& tx, const std::string& sep, std::int32_t& n);
void TxNumSep(std::string& tx, const std::string& sep, double& n);

}  // namespace lumbra
