// Conditions and patterns, comma lists, bracketed items, typed transfer and keyed lists.

#include <gtest/gtest.h>

#include <string>
#include <tuple>
#include <vector>

#include "util/lists/bracketed_item.h"
#include "util/lists/comma_list.h"
#include "util/lists/condition.h"
#include "util/lists/keyed_list.h"
#include "util/lists/typed_value.h"

namespace lumbra {
namespace {

using Lst = std::vector<std::string>;

// LIKE: ? one character, # one digit, * any run, [..] a group, [!..] its complement
TEST(CndAva, ComparesTextsOrdinallyAndMatchesWholeTextsAgainstPatterns) {
    const std::tuple<std::string, std::string, std::string, std::int16_t> cases[] = {
        {"abc", "=", "abc", 1},     {"abc", "=", "ABC", 0},     {"9", ">", "10", 1},
        {"b", ">", "b", 0},         {"ab", "<", "abc", 1},      {"b", ">=", "b", 1},
        {"a", ">=", "b", 0},        {"b", "<=", "b", 1},        {"a", "<>", "b", 1},
        {"a", "<>", "a", 0},        {"a", ":", "a:c", 1},       {"d", ":", "a:c", 0},
        {"bc", "instr", "abc", 1},  {"A0", "LIKE", "A#", 1},    {"AB", "LIKE", "A#", 0},
        {"", "LIKE", "*", 1},       {"abc", "LIKE", "a?c", 1},  {"abcbc", "LIKE", "*bc", 1},
        {"abc", "LIKE", "ab", 0},   {"ab", "LIKE", "abc", 0},   {"b", "LIKE", "[abc]", 1},
        {"d", "LIKE", "[abc]", 0},  {"d", "LIKE", "[!abc]", 1}, {"a", "LIKE", "[!abc]", 0},
        {"m", "LIKE", "[a-z]", 1},  {"M", "LIKE", "[a-z]", 0},  {"A9z", "LIKE", "[A-Z]#[!0-9]", 1},
        {"ab", "LIKE", "a[b", 0},   {"-", "LIKE", "[a-]", 1},   {"b", "LIKE", "[c-a]", 0},
        {"x", "LIKE", "[a-cx]", 1}, {"z", "LIKE", "[xa-z]", 1}};
    for (const auto& [a, op, b, expected] : cases) {
        std::int16_t ok = 7;
        CndAva(a, op, b, ok);
        EXPECT_EQ(ok, expected) << "'" << a << "' " << op << " '" << b << "'";
    }
}

TEST(CommaList, AcceptsExactValuesOrPrefixesElementByElement) {
    // prefix?, list, value, ok
    const std::tuple<bool, std::string, std::string, std::int16_t> cases[] = {
        {false, "", "", 0},       {true, "", "A", 0},      {false, "*", "", 1},
        {true, "*", "x", 1},      {false, "A,", "A", 1},   {false, "A,", "", 0},
        {false, "A,,B", "", 1},   {true, "A,,B", "", 0},   {false, "A,*", "B", 0},
        {true, "X,AB", "ABC", 1}, {false, "A, B", "B", 0}, {false, "A, B", " B", 1}};
    for (const auto& [prefix, lst, val, expected] : cases) {
        std::int16_t ok = 7;
        (prefix ? LstPre : LstIgu)(lst, val, ok);
        EXPECT_EQ(ok, expected) << prefix << " '" << lst << "' '" << val << "'";
    }
}

TEST(ChvExt, SplitsTheTextAroundTheItemOfTheKey) {
    const std::tuple<std::string, std::string, Lst, std::int16_t> cases[] = {
        {"x[CNVCHR=0]y", "cnvchr", {"x", "0", "y"}, 1},
        {"[CnvChr=0]", "cnvchr", {"[CnvChr=0]", "", ""}, 0},
        {"[A=x[1]y]z", "a", {"", "x[1]y", "z"}, 1},
        {"[A=x[1]", "A", {"[A=x[1]", "", ""}, 0},
        {"[AB=1][A=2][A=3]", "A", {"[AB=1]", "2", "[A=3]"}, 1},
        // An item that closes past the 16-bit positions is out of reach.
        {"[A=" + std::string(33000, 'a') + "]",
         "A",
         {"[A=" + std::string(33000, 'a') + "]", "", ""},
         0}};
    for (const auto& [tx, key, parts, ok] : cases) {
        Lst got(3, "old");
        std::int16_t found = 7;
        ChvExt(tx, key, got[0], got[1], got[2], found);
        EXPECT_EQ(std::make_tuple(got, found), std::make_tuple(parts, ok)) << tx.substr(0, 20);
    }
}

TEST(TypedTransfer, TextStaysTextAndAnythingElseReceivesTheNumber) {
    // options, source, target, result
    const std::tuple<std::string, Variant, Variant, Variant> atr[] = {
        {"", "7", "old", "7"},
        {"", " 7x ", std::int16_t{1}, 7.0},
        {"", std::int16_t{3}, Variant(), std::int16_t{3}},
        {"MT", " ab\xE7 ", "", "AB\xC7"},
        {"", Variant::null(), "x", ""}};
    for (const auto& [opc, src, dst, expected] : atr) {
        Variant got = dst;
        VarAtr(opc, src, got);
        EXPECT_EQ(got, expected) << opc;
    }
    std::string text = "x";
    VarVaz(text);
    EXPECT_EQ(text, "");
}

TEST(KeyedList, NamesKeepTheirPositionValuesAreReplacedAndTheCountBoundsNewNames) {
    Lst lst = {"junk"};
    LstIni(lst);
    // name, value, position, count after
    const std::tuple<std::string, std::string, std::int16_t, std::string> steps[] = {
        {"A", "1", 1, "1"}, {"B", "2", 2, "2"}, {"A", "9", 1, "2"}, {"a", "x", 3, "3"}};
    for (const auto& [nom, val, pos, count] : steps) {
        std::int16_t got = -1, p = -1;
        std::string found;
        LstReg(lst, nom, val, got);
        LstCon(lst, nom, found, p);
        EXPECT_EQ(std::make_tuple(got, lst[1], found, p), std::make_tuple(pos, count, val, pos));
    }
    std::string none = "old";
    std::int16_t p = -1;
    LstCon(lst, "b", none, p);
    EXPECT_EQ(std::make_tuple(none, p, lst.size()), std::make_tuple("", 0, 5u));
    // The count decides where a new name goes, up to 32000 names.
    const std::tuple<std::string, std::int16_t, std::size_t> cases[] = {
        {"abc", 1, 3}, {"31999", 1, 32002}, {"32000", 0, 2}, {"-5", 0, 2}};
    for (const auto& [count, ok, slots] : cases) {
        Lst fresh = {"", count};
        std::int16_t got = 7;
        LstAct(fresh, "N", "v", got);
        EXPECT_EQ(std::make_pair(got, fresh.size()), std::make_pair(ok, slots)) << count;
    }
}

}  // namespace
}  // namespace lumbra
