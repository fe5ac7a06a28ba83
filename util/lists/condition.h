#pragma once
// The condition evaluator: whether two texts satisfy an operator given as text. Comparisons are
// ordinal, byte by byte: case-sensitive, no trimming, no numeric reading ("10" sorts before "9").

#include <cstdint>
#include <string>

namespace lumbra {

// ok = 1 when `a op b` holds, else 0. `op` is upper-cased but not trimmed:
//   "=" "<>" ">" "<" ">=" "<="  ordinal comparison of a with b
//   "LIKE"   a matches the pattern b (see like_pattern.h)
//   ":"      b is a range "low:high" cut at its first ":"; low <= a <= high. Without ":" in b,
//            low = b and high = "", so nothing but "" can satisfy it
//   "INSTR"  a occurs in b; an empty b holds nothing, an empty a occurs in any other b
// Any other operator is never satisfied.
void CndAva(const std::string& a, const std::string& op, const std::string& b, std::int16_t& ok);

}  // namespace lumbra
