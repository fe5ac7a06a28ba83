#pragma once
// Splitting and delimiting: the cuts that take parameter lines, port designations, mode texts and
// command lines apart. Positions are 1-based; searches are exact and case-sensitive; found flags
// are 1 or 0. A missing separator is an ordinary outcome and each procedure states what it gives.
// Outputs may be the same objects as inputs: every result is computed before it is stored.

#include <cstdint>
#include <string>
#include <vector>

namespace lumbra {

// Cuts tx at the first sep: pt = the text before it, tx = the text from one character after its
// start, ok = 1. Not found: pt = tx, tx = "", ok = 0. Only one character is skipped, so "a<-b" cut
// at "<-" leaves "-b"; an empty sep is found at position 1 of a non-empty tx.
void TxSep(std::string& tx, const std::string& sep, std::string& pt, std::int16_t& ok);

// TxSep without the flag.
void TxSepS(std::string& tx, const std::string& sep, std::string& pt);

// The same cut with tx unchanged: pt1 = before, pt2 = after, ok = 1; not found: pt1 = tx,
// pt2 = "", ok = 0.
void TxSep2(const std::string& tx, const std::string& sep, std::string& pt1, std::string& pt2,
            std::int16_t& ok);

// The same cut with tx unchanged: pt = before, rest = after; not found: pt = tx, rest = "".
void TxSepC(const std::string& tx, const std::string& sep, std::string& pt, std::string& rest);

// A cut whose mode mo ("kind flags") decides where each part goes:
//   kind "PS":        found: tx = after, pt = before;  not found: tx = whole, pt = ""
//   kind "PE":        found: tx = before, pt = after;  not found: tx = "", pt = whole
//   kind "SE" or "RS": found: tx = before, pt = after; not found: tx = whole, pt = ""
//   other kinds:      found: tx = after, pt = before;  not found: tx = "", pt = whole
// Flag "M" upper-cases both parts, then flag "T" removes their surrounding spaces.
void TxSepMo(const std::string& mo, std::string& tx, const std::string& sep, std::string& pt);

// Every field of tx cut at sep with TxSep: arr = slots 0..n with slot 0 "", n = the number of
// fields. "a,,b" has 3 fields, "a,b," has 2, "" has none. A text of more than 32767 fields is
// refused: n = 0, arr = slot 0 only.
void TxArr(const std::string& tx, const std::string& sep, std::vector<std::string>& arr,
           std::int16_t& n);

// The block between the first dl[0] and the first closing dl.back() at or after it: bef = the
// text before, inn = the text between, aft = the text after, lng = the block's length with its
// delimiters. No block: bef = tx, inn = aft = "", lng = 0. Blocks do not nest ("[a[b]c]" gives
// inner "a[b"); an empty dl finds no block, nor does a block longer than 32767 characters.
void TxDlm(const std::string& tx, std::string& bef, std::string& inn, std::string& aft,
           std::int16_t& lng, const std::string& dl);

// TxDlm with the closing delimiter dl[1] and without lng; a dl shorter than two characters finds
// no block.
void TxDlm2(const std::string& tx, const std::string& dl, std::string& bef, std::string& inn,
            std::string& aft);

// The positions of the block that opens at the first dl[0] at or after p1 and closes at its
// matching dl[1], skipping inner blocks that follow one another ("[a[b]c[d]e]" is one block) but
// not deeper nesting. dl "" means two double quotes. Not found: p1 = p2 = 0. A p1 below 1 is
// taken as 1. A block that opens or closes past position 32767 is not found.
void TxBlk(const std::string& tx, std::int16_t& p1, std::int16_t& p2, const std::string& dl);

// sai = tx without characters of the set chs: mo 0 everywhere, mo 1 at the start, mo 2 at the
// end, mo 3 at both ends. Another mo, or an empty chs, gives tx unchanged.
void TxLpz(std::int16_t mo, const std::string& tx, const std::string& chs, std::string& sai);

// Splits cmd into words at spaces (runs of spaces are one separator; tabs and quotes are ordinary
// characters) and keeps them in TxCmdArg: slot 0 = cmd, slots 1..n = the words, at most 32767.
void TxCmdArr(const std::string& cmd, std::int16_t& n);

// The words of the last text given to TxCmdArr (slot 0 only, "", before the first call).
const std::vector<std::string>& TxCmdArg();

}  // namespace lumbra
