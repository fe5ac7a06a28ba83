#pragma once
// Value coercion: moving a value from one variant into a target of another type, reading yes/no
// values. These never fail towards the caller (a failed number is 0, a failed text ""), except
// TxDbl of a null value, which throws InvalidUseOfNull.
//
// A variant target converts into the kind it holds on entry (see NumAssign); the typed overloads
// stand for targets declared with that type.

#include <cstdint>
#include <string>

#include "util/text/variant.h"

namespace lumbra {

// n = the number in v (text through NumRead, numbers as they are, empty as 0) converted to n's
// type; 0 of n's type on any failure (out of range, null). A text n receives the regional text of
// the number ("0" on failure).
void VlNum(const Variant& v, Variant& n);
void VlNum(const Variant& v, std::int16_t& n);
void VlNum(const Variant& v, std::int32_t& n);
void VlNum(const Variant& v, double& n);
void VlNum(const Variant& v, std::string& n);

// VlNum of v into a double.
double VlDbl(const Variant& v);

// tx = v as text: text unchanged (blanks kept), a number as its canonical text (NumTx); "" for
// empty, null and numbers that have no text.
void VlTx(const Variant& v, std::string& tx);

// VlTx of v.
std::string VlStr(const Variant& v);

// tx without leading and trailing spaces, upper-cased (tabs stay).
std::string TxMai(const std::string& tx);

// A text variant: v as text in the regional format (NumTxRegional for numbers), without leading
// and trailing spaces, upper-cased; "" for empty and null.
Variant VlMai(const Variant& v);

// d = VlNum of the text of v (regional format for a number, so "1,5" reads as 1 where the comma
// is the decimal point). Throws InvalidUseOfNull when v is null.
void TxDbl(const Variant& v, Variant& d);
void TxDbl(const Variant& v, std::int16_t& d);
void TxDbl(const Variant& v, std::int32_t& d);
void TxDbl(const Variant& v, double& d);
void TxDbl(const Variant& v, std::string& d);

// TxDbl of tx into n with ok = 1. A text never fails there, so ok is 1 whenever it is called with
// a text; an out-of-range number leaves n = 0 as VlNum does.
void TxDblOk(const std::string& tx, Variant& n, std::int16_t& ok);
void TxDblOk(const std::string& tx, std::int16_t& n, std::int16_t& ok);
void TxDblOk(const std::string& tx, std::int32_t& n, std::int16_t& ok);
void TxDblOk(const std::string& tx, double& n, std::int16_t& ok);

// A text target receives tx unchanged; any other target the number read from tx in its own type,
// ok = 1. When the number does not fit the target: v = the zero of its kind, ok = 0.
void TxVl(const std::string& tx, Variant& v, std::int16_t& ok);
void TxVl(const std::string& tx, std::int16_t& v, std::int16_t& ok);
void TxVl(const std::string& tx, std::int32_t& v, std::int16_t& ok);
void TxVl(const std::string& tx, double& v, std::int16_t& ok);
void TxVl(const std::string& tx, std::string& v, std::int16_t& ok);

// Reads a yes/no value: text "S", "SI" or "SIM" (any case, blanks around) is 1, other text its
// number ("1" is 1, "N" is 0, "7" stays 7); a number is 1 only when it is 1. With inv = 1 the
// answer is inverted (1 when it was not 1, else 0). A text sai receives "Sim" for 1, "N\xE3o"
// otherwise; a numeric sai receives the value (a 16-bit integer when sai is empty or null).
void VlSimNao(const Variant& v, Variant& sai, std::int16_t inv = 0);
void VlSimNao(const Variant& v, std::int16_t& sai, std::int16_t inv = 0);
void VlSimNao(const Variant& v, std::string& sai, std::int16_t inv = 0);

}  // namespace lumbra
