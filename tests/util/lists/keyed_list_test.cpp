#include "util/lists/keyed_list.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <vector>

#include "util/files/name_index.h"

namespace lumbra {
namespace {

using Lst = std::vector<std::string>;

Lst emptyList() {
    Lst lst = {"junk"};
    LstIni(lst);
    return lst;
}

TEST(KeyedList, NamesKeepTheirPositionAndValuesAreReplaced) {
    Lst lst = emptyList();
    EXPECT_EQ(lst, (Lst{"", ""}));
    const struct {
        std::string nom;
        std::string val;
        std::int16_t pos;
        std::string count;
        std::size_t slots;
    } steps[] = {
        {"A", "1", 1, "1", 3}, {"B", "2", 2, "2", 4}, {"A", "9", 1, "2", 4},
        {"a", "x", 3, "3", 5}, {"", "e", 4, "4", 6},  {"B", "", 2, "4", 6},
    };
    for (const auto& s : steps) {
        std::int16_t pos = -1;
        LstReg(lst, s.nom, s.val, pos);
        EXPECT_EQ(pos, s.pos) << s.nom;
        EXPECT_EQ(lst[1], s.count) << s.nom;
        EXPECT_EQ(lst.size(), s.slots) << s.nom;
    }
    const struct {
        std::string nom;
        std::string val;
        std::int16_t pos;
    } queries[] = {{"A", "9", 1}, {"B", "", 2}, {"a", "x", 3},
                   {"", "e", 4},  {"b", "", 0}, {"C", "", 0}};
    for (const auto& q : queries) {
        std::string val = "old";
        std::int16_t pos = -1;
        LstCon(lst, q.nom, val, pos);
        EXPECT_EQ(val, q.val) << q.nom;
        EXPECT_EQ(pos, q.pos) << q.nom;
    }
}

TEST(KeyedList, TheCountDecidesWhereANewNameGoesUpTo32000) {
    const struct {
        std::string count;
        std::int16_t ok;
        std::size_t slots;
    } cases[] = {{"", 1, 3},      {"abc", 1, 3},   {"31999", 1, 32002},
                 {"32000", 0, 2}, {"32767", 0, 2}, {"-5", 0, 2}};
    for (const auto& c : cases) {
        Lst lst = {"", c.count};
        std::int16_t ok = 7;
        LstAct(lst, "N", "v", ok);
        EXPECT_EQ(ok, c.ok) << c.count;
        ASSERT_EQ(lst.size(), c.slots) << c.count;
        if (c.ok == 1) {
            EXPECT_EQ(lst.back(), "v");
        }
    }
}

TEST(KeyedList, The32001stDistinctNameIsRefusedAndTheListKept) {
    Lst lst = emptyList();
    std::int16_t ok = 0;
    // The names go straight into the index: registering them one by one would search a growing
    // index 32000 times.
    for (int i = 1; i <= 32000; ++i) {
        IdxAdd(lst[0], "N" + std::to_string(i), 1, static_cast<std::int16_t>(i), ok);
        ASSERT_EQ(ok, 1);
        lst.push_back("v" + std::to_string(i));
    }
    lst[1] = "32000";
    LstAct(lst, "N32000", "last", ok);
    EXPECT_EQ(ok, 1);
    EXPECT_EQ(lst.back(), "last");

    const Lst before = lst;
    LstAct(lst, "N32001", "x", ok);
    EXPECT_EQ(ok, 0);
    EXPECT_EQ(lst, before);
}

TEST(KeyedList, AnArrayWithoutTheCountSlotIsLeftAlone) {
    for (Lst lst : {Lst{}, Lst{""}}) {
        const Lst before = lst;
        std::int16_t pos = -1;
        LstReg(lst, "A", "1", pos);
        EXPECT_EQ(pos, 0);
        EXPECT_EQ(lst, before);
        std::string val = "old";
        LstCon(lst, "A", val, pos);
        EXPECT_EQ(val, "");
        EXPECT_EQ(pos, 0);
    }
}

}  // namespace
}  // namespace lumbra
