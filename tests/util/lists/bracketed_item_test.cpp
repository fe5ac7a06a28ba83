#include "util/lists/bracketed_item.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>

#include "util/lists/typed_value.h"

namespace lumbra {
namespace {

TEST(ChvExt, SplitsTheTextAroundTheItemOfTheKey) {
    const struct {
        std::string tx;
        std::string key;
        std::string bef;
        std::string val;
        std::string aft;
        std::int16_t ok;
    } cases[] = {
        {"[CNVCHR=0]", "cnvchr", "", "0", "", 1},
        {"[CnvChr=0]", "cnvchr", "[CnvChr=0]", "", "", 0},
        {"x[A=1]y", "A", "x", "1", "y", 1},
        {"[A=x[1]y]z", "a", "", "x[1]y", "z", 1},
        {"[A=[1][2]]", "A", "", "[1][2]", "", 1},
        // Deeper nesting is not followed: the item closes at the second "]".
        {"[A=[[1]]]", "A", "", "[[1]", "]", 1},
        {"[A=1", "A", "[A=1", "", "", 0},
        {"[A=x[1]", "A", "[A=x[1]", "", "", 0},
        {"[B=1][A=]", "A", "[B=1]", "", "", 1},
        {"[AB=1][A=2]", "A", "[AB=1]", "2", "", 1},
        {"[A=1][A=2]", "A", "", "1", "[A=2]", 1},
        {"[\xC7=1]", "\xE7", "", "1", "", 1},
        {"[A]=1]", "a]", "[A]=1]", "", "", 0},
        {"", "A", "", "", "", 0},
        // An item that closes past the 16-bit positions is out of reach.
        {"#X - [CNVCHR=" + std::string(33000, 'a') + "]", "CNVCHR",
         "#X - [CNVCHR=" + std::string(33000, 'a') + "]", "", "", 0},
    };
    for (const auto& c : cases) {
        std::string bef = "old";
        std::string val = "old";
        std::string aft = "old";
        std::int16_t ok = 7;
        ChvExt(c.tx, c.key, bef, val, aft, ok);
        EXPECT_EQ(ok, c.ok) << c.tx;
        EXPECT_EQ(bef, c.bef) << c.tx;
        EXPECT_EQ(val, c.val) << c.tx;
        EXPECT_EQ(aft, c.aft) << c.tx;
    }
    std::string mrc;
    std::int16_t len = 0;
    ChvMrc("CnvChr", mrc, len);
    EXPECT_EQ(mrc, "[CNVCHR=");
    EXPECT_EQ(len, 8);
}

TEST(ChvValTip, WritesTheValueByTheKindTheTargetHoldsOnlyWhenFound) {
    const std::string tx = "[N= 2.5x][T= a ]";
    const struct {
        std::string key;
        Variant vop;
        Variant expected;
        std::int16_t ok;
    } cases[] = {{"n", "old", " 2.5x", 1},
                 {"N", Variant(), 2.5, 1},
                 {"T", std::int16_t{4}, 0.0, 1},
                 {"X", "old", "old", 0}};
    for (const auto& c : cases) {
        Variant vop = c.vop;
        std::int16_t ok = 7;
        ChvValTip(tx, c.key, vop, ok);
        EXPECT_EQ(vop, c.expected) << c.key;
        EXPECT_EQ(ok, c.ok) << c.key;
    }
    std::string text;
    double number = 0;
    std::int16_t rounded = 0;
    std::int16_t ok = 0;
    ChvValTip(tx, "T", text, ok);
    ChvValTip(tx, "N", number, ok);
    ChvValTip(tx, "N", rounded, ok);
    EXPECT_EQ(text, " a ");
    EXPECT_EQ(number, 2.5);
    EXPECT_EQ(rounded, 2);  // half to even
}

TEST(VarAtr, TextStaysTextAndAnythingElseReceivesTheNumber) {
    const struct {
        std::string opc;
        Variant src;
        Variant dst;
        Variant expected;
    } cases[] = {
        {"", "7", Variant(), 7.0},
        {"", "7", "old", "7"},
        {"", " 7x ", std::int16_t{1}, 7.0},
        {"", "abc", 1.5, 0.0},
        {"", std::int16_t{3}, Variant(), std::int16_t{3}},
        {"", 0.5, "", ".5"},
        {"", -2.25, "", "-2.25"},
        {"M", " ab\xE7 ", "", " AB\xC7 "},
        {"T", " ab ", "", "ab"},
        {"MT", " ab ", "", "AB"},
        {"mt", " ab ", "", " ab "},
        {"MT", " ab ", Variant(), 0.0},
        {"", Variant::null(), "x", ""},
    };
    for (const auto& c : cases) {
        Variant dst = c.dst;
        VarAtr(c.opc, c.src, dst);
        EXPECT_EQ(dst, c.expected) << c.opc;
    }
}

TEST(VarCnv, ForcesTheKindNamedByTipBeforeTheTransfer) {
    const struct {
        Variant src;
        Variant dst;
        Variant tip;
        bool withTip;
        Variant expected;
    } cases[] = {
        {"12", Variant(), Variant(), false, 12.0},
        {"12", "old", Variant(), false, "12"},
        {1.5, "old", Variant(), false, "1.5"},
        {std::int16_t{3}, 2.0, Variant(), false, std::int16_t{3}},
        {"12", "old", "NUM", true, 12.0},
        {std::int16_t{3}, 2.0, "NOME$", true, "3"},
        {Variant(), 2.0, "NOME$", true, ""},
    };
    for (const auto& c : cases) {
        Variant dst = c.dst;
        if (c.withTip) {
            VarCnv(c.src, dst, c.tip);
        } else {
            VarCnv(c.src, dst);
        }
        EXPECT_EQ(dst, c.expected);
    }
    const struct {
        Variant dst;
        Variant tip;
        Variant expected;
    } empties[] = {{"x", Variant(), ""},
                   {2.5, Variant(), std::int16_t{0}},
                   {Variant(), Variant(), std::int16_t{0}},
                   {1.0, "NOME$", ""},
                   {"x", "NUM", std::int16_t{0}},
                   {"x", "$X", std::int16_t{0}}};
    for (const auto& e : empties) {
        Variant dst = e.dst;
        if (e.tip.isEmpty()) {
            VarVaz(dst);
        } else {
            VarVaz(dst, e.tip);
        }
        EXPECT_EQ(dst, e.expected);
    }
}

}  // namespace
}  // namespace lumbra
