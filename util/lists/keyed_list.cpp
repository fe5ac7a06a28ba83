#include "util/lists/keyed_list.h"

#include <cstddef>
#include <utility>

#include "util/files/name_index.h"
#include "util/text/value.h"
#include "util/text/variant.h"

namespace lumbra {

namespace {

constexpr std::size_t kIndexSlot = 0;
constexpr std::size_t kCountSlot = 1;
constexpr int kMaxNames = 32000;

std::size_t valueSlot(std::int16_t pos) {
    return static_cast<std::size_t>(pos) + 1;
}

bool isKeyedList(const std::vector<std::string>& lst) {
    return lst.size() > kCountSlot;
}

// The position the name index gives `nom`, 0 when absent.
std::int16_t positionOf(const std::vector<std::string>& lst, const std::string& nom) {
    std::int16_t tip = 0;
    std::int16_t pos = 0;
    IdxCon(lst[kIndexSlot], nom, tip, pos);
    return pos;
}

// Registers a new name at position n+1; 0 when the index refuses it.
std::int16_t addName(std::vector<std::string>& lst, const std::string& nom) {
    std::int16_t count = 0;
    VlNum(Variant(lst[kCountSlot]), count);
    if (count >= kMaxNames) return 0;
    const auto pos = static_cast<std::int16_t>(count + 1);

    std::string index = lst[kIndexSlot];
    std::int16_t ok = 0;
    IdxAdd(index, nom, 1, pos, ok);
    if (ok != 1) return 0;
    lst.resize(valueSlot(pos) + 1);
    lst[kIndexSlot] = std::move(index);
    lst[kCountSlot] = std::to_string(pos);
    return pos;
}

}  // namespace

void LstIni(std::vector<std::string>& lst) {
    lst.assign(2, std::string());
}

void LstReg(std::vector<std::string>& lst, const std::string& nom, const std::string& val,
            std::int16_t& pos) {
    pos = 0;
    if (!isKeyedList(lst)) return;
    std::int16_t found = positionOf(lst, nom);
    if (found == 0) {
        found = addName(lst, nom);
        if (found == 0) return;
    }
    // A count slot that lags behind the index (a list assembled by hand) would leave the slot
    // outside the array; growing it keeps the value where the name says it is.
    if (valueSlot(found) >= lst.size()) lst.resize(valueSlot(found) + 1);
    lst[valueSlot(found)] = val;
    pos = found;
}

void LstAct(std::vector<std::string>& lst, const std::string& nom, const std::string& val,
            std::int16_t& ok) {
    std::int16_t pos = 0;
    LstReg(lst, nom, val, pos);
    ok = pos != 0 ? 1 : 0;
}

void LstCon(const std::vector<std::string>& lst, const std::string& nom, std::string& val,
            std::int16_t& pos) {
    val.clear();
    pos = 0;
    if (!isKeyedList(lst)) return;
    const std::int16_t found = positionOf(lst, nom);
    if (found == 0 || valueSlot(found) >= lst.size()) return;
    val = lst[valueSlot(found)];
    pos = found;
}

}  // namespace lumbra
