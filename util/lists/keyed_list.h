#pragma once
// Keyed lists: text values kept under names in one text array, so that a whole list travels,
// is stored and is replaced as a single value.
//   slot 0    the name index (util/files/name_index.h) mapping each name to its position 1..n
//   slot 1    n, the number of names, as decimal text ("" in an empty list)
//   slot k+1  the value of the name at position k
// Names are compared exactly (callers upper-case them first); a name keeps its position when its
// value is replaced, and a new name takes position n+1, up to 32000.
// An array with fewer than the two slots 0 and 1 is not a keyed list: it is left as it is and
// holds no names.

#include <cstdint>
#include <string>
#include <vector>

namespace lumbra {

// lst = an empty keyed list: slots 0 and 1, both "".
void LstIni(std::vector<std::string>& lst);

// Sets `nom` to `val`; pos = the name's position, or 0 (lst unchanged) when the name cannot be
// added: the list is full, the name holds the byte 0, or lst is not a keyed list.
void LstReg(std::vector<std::string>& lst, const std::string& nom, const std::string& val,
            std::int16_t& pos);

// LstReg with ok = 1 when the name was set, else 0.
void LstAct(std::vector<std::string>& lst, const std::string& nom, const std::string& val,
            std::int16_t& ok);

// val = the value of `nom` and pos its position; "" and 0 when the name is absent.
void LstCon(const std::vector<std::string>& lst, const std::string& nom, std::string& val,
            std::int16_t& pos);

}  // namespace lumbra
