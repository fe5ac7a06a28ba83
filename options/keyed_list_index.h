#pragma once
// The positions of the names of one keyed list (util/lists/keyed_list.h), kept beside the list in
// a hash. The list's own name index is a text walked from its start on every lookup, so filling
// or querying a list of n names that way takes time in n squared; a DEF zone of some thousands of
// options made that visible.
//
// The index follows one list from the moment it is reset on it while the list is empty; from then
// on every change of that list must go through Reg. Each call first checks that the list is still
// the one it followed (the same length of name index, the same count): a list changed behind its
// back, or one that was not empty when the index was reset, is served by the keyed-list
// procedures themselves, which give the same results, only slower.

#include <cstddef>
#include <cstdint>
#include <string>
#include <unordered_map>
#include <vector>

namespace lumbra {

class KeyedListIndex {
  public:
    // Forgets every name; follows lst from now on when it is an empty keyed list (LstIni).
    void Reset(const std::vector<std::string>& lst);
    // LstReg on lst: sets nom to val; pos = its position, 0 when the name cannot be added.
    void Reg(std::vector<std::string>& lst, const std::string& nom, const std::string& val,
             std::int16_t& pos);
    // LstCon on lst: val = the value of nom and pos its position; "" and 0 when absent.
    void Con(const std::vector<std::string>& lst, const std::string& nom, std::string& val,
             std::int16_t& pos) const;

  private:
    bool Follows(const std::vector<std::string>& lst) const;

    std::unordered_map<std::string, std::int16_t> positions_;
    std::size_t indexLength_ = 0;  // the length of the list's name index when last seen
    std::string count_;            // the list's count slot when last seen
    bool following_ = false;
};

}  // namespace lumbra
