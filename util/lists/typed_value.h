#pragma once
// Typed value transfer: a value written into a target according to what the target holds on
// entry. Text stays text; anything else (a number, or empty) receives the number read from the
// text. One query can so serve callers that want text and callers that want numbers.
//
// The typed overloads stand for targets declared with that type: a text target always takes the
// text branch, a numeric one the number branch, converted into its own type (16-bit integers
// round half to even, and a number that does not fit gives 0).

#include <cstdint>
#include <string>

#include "util/text/variant.h"

namespace lumbra {

// Text target: dst = src when src is text, else src's canonical text without blanks around it
// (VlStr); then option "M" upper-cases dst and option "T" trims its blanks.
// Other targets: dst = the number read from a text src, as a double; a src that is not text is
// copied unchanged.
void VarAtr(const std::string& opc, const Variant& src, Variant& dst);
void VarAtr(const std::string& opc, const Variant& src, std::string& dst);
void VarAtr(const std::string& opc, const Variant& src, double& dst);
void VarAtr(const std::string& opc, const Variant& src, std::int16_t& dst);

// dst = the empty value of its kind: "" when it holds text, else the 16-bit integer 0. Given
// `tip`, the kind is named by it instead: "" when the text of `tip` ends with "$" (a name such as
// NOME$), else the integer 0.
void VarVaz(Variant& dst);
void VarVaz(Variant& dst, const Variant& tip);
void VarVaz(std::string& dst);
void VarVaz(double& dst);
void VarVaz(std::int16_t& dst);

// Typed transfer without options, optionally forcing dst's kind first (VarVaz with `tip`): a src
// that is not text into a text dst gives src's canonical text (VlStr); a text src into another dst
// gives the number read from it, as a double (VlDbl); otherwise dst = src.
void VarCnv(const Variant& src, Variant& dst);
void VarCnv(const Variant& src, Variant& dst, const Variant& tip);
void VarCnv(const Variant& src, std::string& dst);
void VarCnv(const Variant& src, double& dst);
void VarCnv(const Variant& src, std::int16_t& dst);

}  // namespace lumbra
