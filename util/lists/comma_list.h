#pragma once
// Comma lists of accepted values or prefixes, as users write them in parameter files. Elements are
// taken exactly as written (a blank after a comma belongs to the next element); a final comma adds
// no element; the list "*" alone accepts everything, while "*" as one element of a longer list is
// an ordinary element.

#include <cstdint>
#include <string>

namespace lumbra {

// ok = 1 when `lst` is "*" or one of its elements equals `val` exactly.
void LstIgu(const std::string& lst, const std::string& val, std::int16_t& ok);

// ok = 1 when `lst` is "*" or `val` begins with one of its elements. An empty `val` begins with
// nothing, not even with an empty element.
void LstPre(const std::string& lst, const std::string& val, std::int16_t& ok);

}  // namespace lumbra
