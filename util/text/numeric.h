#pragma once
// The one numeric reading of text and the assignment of a number into a target of a given kind.
// Every procedure that turns text into a number goes through NumRead, so "27", "&H1B" and "2 7"
// mean the same thing in a parameter file, on the command line and in a code list.

#include <cstdint>
#include <stdexcept>
#include <string>
#include <string_view>

#include "util/text/variant.h"

namespace lumbra {

// Reads the number at the start of tx:
// - space, tab and line feed are ignored wherever they stand ("1 2" is 12);
// - "&H" + hexadecimal digits or "&O" + octal digits (either case) is a whole number; a value up
//   to 16 bits is a signed 16-bit number ("&HFFFF" is -1), up to 32 bits a signed 32-bit one
//   ("&H10000" is 65536, "&HFFFFFFFF" is -1); leading zeros do not count, and a value past 32 bits
//   ("&H123456789") is an overflow;
// - otherwise an optional sign, decimal digits with at most one "." (always ".", whatever the
//   locale) and an optional exponent "E" or "D" (either case) with optional sign and digits;
// - the reading stops at the first character that does not fit; no number reads as 0.
// Returns false (d = 0) only when the number overflows: too large for a double ("1E400"), or an
// "&H"/"&O" value past 32 bits.
bool NumRead(std::string_view tx, double& d);
// The same reading; a number too large for a double reads as 0.
double NumRead(std::string_view tx);

// d rounded to the nearest integer, halves to the even neighbour (2.5 -> 2, 3.5 -> 4); false and
// n unchanged when the result is outside the target's range or d is not finite.
bool NumToInt16(double d, std::int16_t& n);
bool NumToInt32(double d, std::int32_t& n);

// The canonical text of a number: 15 significant digits, "." as decimal point, no leading zero
// before it and no leading blank (".5", "-.5", "12", "1.25"), exponent form past 15 digits or
// below .0001 ("1E+16", "1.5E-05"). "" for infinity and NaN.
std::string NumTx(double d);

// The regional text of a number: the canonical digits with the decimal point of the global C++
// locale (std::locale()), and a zero before a leading decimal point ("0,5" where the comma is the
// decimal point). This is what a number becomes when it is put into a text target.
std::string NumTxRegional(double d);

// Puts the number d into target, converting to the kind the target holds on entry: 16- and 32-bit
// integers round half to even and fail outside their range, a double takes d, text takes
// NumTxRegional(d), an empty or null target takes a double. Returns false (target unchanged) on
// failure, which includes a d that is not finite.
bool NumAssign(double d, Variant& target);
bool NumAssign(double d, std::int16_t& target);
bool NumAssign(double d, std::int32_t& target);
bool NumAssign(double d, double& target);
bool NumAssign(double d, std::string& target);

// The zero of the target's kind: "" for text, 0 of the held kind for numbers, a double 0 for an
// empty or null target.
void ZeroOfKind(Variant& target);

// What TxDbl throws for a null value, the one error the value procedures pass to their caller.
class InvalidUseOfNull : public std::invalid_argument {
  public:
    InvalidUseOfNull() : std::invalid_argument("Invalid use of Null") {}
};

}  // namespace lumbra
