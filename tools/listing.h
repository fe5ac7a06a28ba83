#pragma once
// The lines of "lumbractl listar": one per configured row,
//
//     ZONE <TAB> N <TAB> name <TAB> kind <TAB> value
//
// zones LIG, GAV, DIS_OPC and DIS_CMD in this order, N the row number from 1. Texts leave in UTF-8,
// and a byte that a terminal or an editor would not keep (below 32, 127, and the five bytes
// Windows-1252 leaves undefined) is written chr$(N), the file's own notation, so that
// "name [kind]=value" pasted into a zone read with the literal expansion gives the same bytes.

#include <string>
#include <string_view>
#include <vector>

#include "app/LumbraGb.h"

namespace lumbra::ctl {

// A name or kind: Windows-1252 in, UTF-8 out, unkept bytes as chr$(N).
std::string ListingField(std::string_view cp1252);

// A value, as ListingField, and safe at the end of a parameter-file line: a final "+" (which
// would continue the line) is written chr$(43), and a value ending in a blank or in "<-" gets the
// end mark "<-", which the reader takes off again (editors strip trailing blanks, and the reader
// would take the value's own "<-" for the mark).
std::string ListingValue(std::string_view cp1252);

// The lines, in UTF-8, without line ends.
std::vector<std::string> ListingLines(const LumbraGbState& g);

}  // namespace lumbra::ctl
