#include "util/files/name_index.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <vector>

namespace lumbra {
namespace {

using namespace std::string_literals;

struct Entry {
    std::string name;
    std::int16_t pos;
    std::int16_t tip = 1;
};

std::string indexOf(const std::vector<Entry>& entries) {
    std::string idx;
    for (const auto& e : entries) {
        std::int16_t ok = 0;
        IdxAdd(idx, e.name, e.tip, e.pos, ok);
        EXPECT_EQ(ok, 1) << e.name;
    }
    return idx;
}

TEST(NameIndex, TwoEntriesAreLaidOutByteForByte) {
    EXPECT_EQ(indexOf({{"PORTA", 3}, {"VEL", 300}}),
              "\x01\x00\x03\x00PORTA\x00\x01\x01\x2C\x00VEL\x00"s);
}

TEST(NameIndex, PositionCodeCoversOneTo32000AndDecodesBack) {
    const struct {
        std::int16_t pos;
        std::string cod;
        std::int16_t ok;
    } cases[] = {
        {-32768, "", 0},       {0, "", 0},
        {1, "\x00\x01"s, 1},   {255, "\x00\xFF"s, 1},
        {256, "\x01\x00"s, 1}, {32000, "\x7D\x00"s, 1},
        {32001, "", 0},        {32767, "", 0},
    };
    // A short code or one beyond 16 bits decodes to no position.
    for (const std::string& cod : {"\x01"s, "\x80\x00"s}) {
        std::int16_t pos = 99;
        IdxPosDec(cod, pos);
        EXPECT_EQ(pos, 0);
    }
    for (const auto& c : cases) {
        std::string cod = "old";
        std::int16_t ok = 7;
        IdxPosCod(c.pos, cod, ok);
        EXPECT_EQ(cod, c.cod) << c.pos;
        EXPECT_EQ(ok, c.ok) << c.pos;
        std::int16_t back = 99;
        IdxPosDec(cod, back);
        EXPECT_EQ(back, c.ok == 1 ? c.pos : 0) << c.pos;
    }
}

TEST(NameIndex, AddRefusesKindsPositionsAndNamesThatBreakTheLayout) {
    const struct {
        Entry entry;
        std::int16_t ok;
    } cases[] = {
        {{"A", 1, 255}, 1}, {{"A", 32000}, 1},  {{"", 1}, 1},
        {{"A", 1, 0}, 0},   {{"A", 1, 256}, 0}, {{"A", 0}, 0},
        {{"A", 32001}, 0},  {{"A", -3}, 0},     {{"A\0B"s, 1}, 0},
    };
    const std::string before = indexOf({{"X", 9}});
    for (const auto& c : cases) {
        std::string idx = before;
        std::int16_t ok = 7;
        IdxAdd(idx, c.entry.name, c.entry.tip, c.entry.pos, ok);
        EXPECT_EQ(ok, c.ok) << c.entry.tip << " " << c.entry.pos;
        EXPECT_EQ(idx.size(), before.size() + (c.ok == 1 ? 5 + c.entry.name.size() : 0));
    }
}

TEST(NameIndex, LookupFindsTheFirstEntryOfExactlyThatName) {
    const std::string idx = indexOf({{"PORTA", 3},
                                     {"VEL", 300},
                                     {"DUP", 2},
                                     {"DUP", 5},
                                     {"", 40},
                                     {"K", 32000, 255},
                                     {"L", 256, 128}});
    const struct {
        std::string name;
        std::int16_t pos;
        std::int16_t tip;
    } cases[] = {
        {"PORTA", 3, 1},   {"VEL", 300, 1}, {"DUP", 2, 1},    {"", 40, 1},
        {"K", 32000, 255}, {"L", 256, 128}, {"porta", 0, 0},  {"PORT", 0, 0},
        {"ORTA", 0, 0},    {"VEL ", 0, 0},  {"ABSENT", 0, 0},
    };
    for (const auto& c : cases) {
        std::int16_t tip = 9;
        std::int16_t pos = 9;
        IdxCon(idx, c.name, tip, pos);
        EXPECT_EQ(pos, c.pos) << "'" << c.name << "'";
        EXPECT_EQ(tip, c.tip) << "'" << c.name << "'";
    }
}

TEST(NameIndex, LookupIgnoresPositionCodesThatSpellTheSoughtName) {
    // Position 65 is coded 0, 'A', so the entry begins 0, 'A', 0 before its own name; an entry at
    // 256 ends its code in 0 next to its opening mark, which reads like an empty name.
    const struct {
        std::vector<Entry> entries;
        std::string name;
        std::int16_t pos;
    } cases[] = {
        {{{"A", 65}}, "A", 65},
        {{{"Z", 65}, {"A", 7}}, "A", 7},
        {{{"X", 256}, {"", 2}}, "", 2},
        {{{"X", 256}}, "", 0},
    };
    for (const auto& c : cases) {
        std::int16_t tip = 9;
        std::int16_t pos = 9;
        IdxCon(indexOf(c.entries), c.name, tip, pos);
        EXPECT_EQ(pos, c.pos) << "'" << c.name << "'";
    }
}

TEST(NameIndex, LookupInAnEmptyOrTruncatedIndexFindsNothing) {
    const std::string full = indexOf({{"PORTA", 3}});
    for (std::size_t len = 0; len < full.size(); ++len) {
        std::int16_t tip = 9;
        std::int16_t pos = 9;
        IdxCon(full.substr(0, len), "PORTA", tip, pos);
        EXPECT_EQ(pos, 0) << len;
        EXPECT_EQ(tip, 0) << len;
    }
}

}  // namespace
}  // namespace lumbra
