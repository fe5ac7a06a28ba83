#include "options/keyed_list_index.h"

#include "util/files/name_index.h"
#include "util/lists/keyed_list.h"

namespace lumbra {

namespace {

constexpr std::size_t kIndexSlot = 0;
constexpr std::size_t kCountSlot = 1;
// Keyed lists register every name with this kind.
constexpr std::int16_t kNameKind = 1;

std::size_t ValueSlot(std::int16_t pos) {
    return static_cast<std::size_t>(pos) + 1;
}

}  // namespace

void KeyedListIndex::Reset(const std::vector<std::string>& lst) {
    positions_.clear();
    // Only an empty list can be followed: the names of a filled one are known to its index text
    // alone.
    following_ = lst.size() > kCountSlot && lst[kIndexSlot].empty() && lst[kCountSlot].empty();
    indexLength_ = 0;
    count_.clear();
}

bool KeyedListIndex::Follows(const std::vector<std::string>& lst) const {
    return following_ && lst.size() >= positions_.size() + 2 &&
           lst[kIndexSlot].size() == indexLength_ && lst[kCountSlot] == count_;
}

void KeyedListIndex::Reg(std::vector<std::string>& lst, const std::string& nom,
                         const std::string& val, std::int16_t& pos) {
    if (!Follows(lst)) {
        following_ = false;
        LstReg(lst, nom, val, pos);
        return;
    }
    pos = 0;
    if (const auto it = positions_.find(nom); it != positions_.end()) {
        pos = it->second;
        lst[ValueSlot(pos)] = val;
        return;
    }

    // A new name takes the next position. The name index refuses what a keyed list refuses
    // (positions past its limit, names holding the byte 0) and then leaves the text as it was.
    const auto next = static_cast<std::int16_t>(positions_.size() + 1);
    std::int16_t ok = 0;
    IdxAdd(lst[kIndexSlot], nom, kNameKind, next, ok);
    if (ok != 1) return;
    lst.resize(ValueSlot(next) + 1);
    lst[kCountSlot] = std::to_string(next);
    lst[ValueSlot(next)] = val;
    positions_.emplace(nom, next);
    indexLength_ = lst[kIndexSlot].size();
    count_ = lst[kCountSlot];
    pos = next;
}

void KeyedListIndex::Con(const std::vector<std::string>& lst, const std::string& nom,
                         std::string& val, std::int16_t& pos) const {
    if (!Follows(lst)) {
        LstCon(lst, nom, val, pos);
        return;
    }
    const auto it = positions_.find(nom);
    if (it == positions_.end()) {
        val.clear();
        pos = 0;
        return;
    }
    pos = it->second;
    val = lst[ValueSlot(pos)];
}

}  // namespace lumbra
