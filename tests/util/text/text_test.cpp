// The text procedures: number reading and writing, code lists, cuts and blocks, values.

#include <gtest/gtest.h>

#include <locale>
#include <string>
#include <tuple>
#include <vector>

#include "util/text/literal.h"
#include "util/text/numeric.h"
#include "util/text/split.h"
#include "util/text/value.h"

namespace lumbra {
namespace {

using namespace std::string_literals;
using Words = std::vector<std::string>;

// "," as the global locale's decimal point while in scope, as on a Portuguese desktop.
struct Comma : std::numpunct<char> {
    char do_decimal_point() const override { return ','; }
};
struct CommaDecimalLocale {
    std::locale saved = std::locale::global(std::locale(std::locale::classic(), new Comma));
    ~CommaDecimalLocale() { std::locale::global(saved); }
};

const Variant kInt16{std::int16_t{9}};
const Variant kInt32{std::int32_t{9}};
const Variant kDouble{9.0};
const Variant kText{"x"};

TEST(NumRead, ReadsEveryNotationStopsAtTheFirstUnfitCharacterAndFailsOnOverflow) {
    const std::tuple<const char*, double, bool> cases[] = {
        // &H, &O read 16-bit codes back signed; 1E23 and 16 digits are past the exact products
        {"&h1b", 27, true},       {"9007199254740993E1", 9007199254740993E1, true},
        {"&o33", 27, true},       {"&HFFFF", -1, true},
        {"&H10000", 65536, true}, {"&H123456789", 0, false},
        {" 1\t2\n", 12, true},    {"1d-2", 0.01, true},
        {"1D+10", 1e10, true},    {"-.5", -0.5, true},
        {"abc", 0, true},         {"123456789012345678901234567890", 1.2345678901234568e29, true},
        {"1E-400", 0, true},      {"1E400", 0, false},
        {"1E23", 1e23, true},     {"-1e-23", -1e-23, true}};
    for (const auto& [tx, expected, ok] : cases) {
        double d = -99;
        const bool read = NumRead(tx, d);
        EXPECT_EQ(std::make_tuple(read, d), std::make_tuple(ok, expected)) << tx;
    }
}

TEST(TxCnvChr, DecodesCodeListsToTheExactBytes) {
    const std::tuple<const char*, std::string> cases[] = {
        {"chr$(27,112,0,25,250)", "\x1Bp\0\x19\xFA"s},
        {"A$(B bin$(13,10)", "A$(B \r\n"},
        {"chr$(&H1B)xchr$( 6 5 )", "\x1BxA"},
        {"chr$(65,,66)", "A\0B"s},
        {"x chr$(65", "x A"},
        {"chr$(300)chr$(-1)", ""},
        {"CHR$(65)chr $(65)", "CHR$(65)chr $(65)"},
        // A field outside 16 bits repeats the code stored last.
        {"chr$(65,70000)chr$(1E9,66)", "AA\0B"s}};
    for (const auto& [tx, expected] : cases) {
        std::string out = tx;
        TxCnvChr(out);
        EXPECT_EQ(out, expected) << tx;
    }
    const std::vector<Variant> codes = {"65,x", 255.0, 256.0, -1.0, 0.0, Variant::null()};
    EXPECT_EQ(TxChrLst(codes), "A\0\xFF\0"s) << "numbers outside 0..255 give no character";
}

TEST(TxSub, ReplacesFirstOrEveryOccurrenceAndNeverLoops) {
    const std::tuple<const char*, const char*, const char*, const char*, const char*> cases[] = {
        {"R", "a.b.c", ".", ",", "a,b,c"},
        {"r", "a.b.c", ".", ",", "a,b.c"},
        {"R", "aaa", "a", "aa", "aaa"},
        {"R", "abc", "", "x", "abc"},
        {"R", "aab", "ab", "b", "b"}};
    for (const auto& [modo, in, ant, nov, expected] : cases) {
        std::string tx = in;
        TxSub(modo, tx, ant, nov);
        EXPECT_EQ(tx, expected) << modo << " " << in;
    }
}

// TxSep cuts at the first character of sep and skips one character; TxSepL cuts at the whole sep.
TEST(TxSep, CutsAtTheFirstSeparatorSkippingOneCharacterOrTheWholeSeparator) {
    const std::tuple<const char*, const char*, Words, std::int16_t, Words> cases[] = {
        {"COM1:9600", ":", {"COM1", "9600"}, 1, {"COM1", "9600"}},
        {"9600", ":", {"9600", ""}, 0, {"9600", ""}},
        {"a<-b", "<-", {"a", "-b"}, 1, {"a", "b"}},
        {"abc", "", {"", "bc"}, 1, {"abc", ""}}};
    for (const auto& [in, sep, parts, ok, whole] : cases) {
        std::string tx = in, part, pt1, pt2, txL = in, ptL;
        std::int16_t ok1 = 9, ok2 = 9;
        TxSep(tx, sep, part, ok1);
        TxSep2(in, sep, pt1, pt2, ok2);
        TxSepL(txL, sep, ptL);
        EXPECT_EQ(Words({part, tx, pt1, pt2, ptL, txL}),
                  Words({parts[0], parts[1], parts[0], parts[1], whole[0], whole[1]}))
            << in;
        EXPECT_EQ(ok1 * 10 + ok2, ok * 11) << in;
    }
    std::string nums = "12,34";
    std::int16_t number = 9;
    TxNumSep(nums, ",", number);  // the number of the first field, cut off the text
    EXPECT_EQ(std::make_tuple(number, nums), std::make_tuple(std::int16_t{12}, std::string("34")));
}

TEST(TxArr, GivesEveryFieldBehindAnEmptySlotZero) {
    const std::tuple<std::string, Words> cases[] = {
        {"a,,b", {"", "a", "", "b"}}, {"a,b,", {"", "a", "b"}}, {"", {""}}};
    for (const auto& [tx, fields] : cases) {
        Words arr = {"stale", "x"};
        std::int16_t n = -1;
        TxArr(tx, ",", arr, n);
        EXPECT_EQ(std::make_tuple(arr, n),
                  std::make_tuple(fields, std::int16_t(fields.size() - 1)));
    }
}

// Positions and counts are 16-bit: at the limit a text is taken, past it refused, never wrapped.
TEST(SixteenBitLimits, TextsPastThemAreRefusedNotWrapped) {
    for (const std::size_t extra : {0u, 1u}) {
        Words arr;
        std::int16_t n = -1;
        TxArr(std::string(32767 + extra, '/'), "/", arr, n);
        EXPECT_EQ(n, extra == 0 ? 32767 : 0);
        EXPECT_EQ(arr.size(), static_cast<std::size_t>(n) + 1);

        const std::string block = "[" + std::string(32765 + extra, 'x') + "]";
        std::string bef, inn, aft;
        std::int16_t lng = -1, p1 = 1, p2 = -1;
        TxDlm(block, bef, inn, aft, lng, "[]");
        TxBlk(block, p1, p2, "[]");
        EXPECT_EQ(lng, extra == 0 ? 32767 : 0);
        EXPECT_EQ(p2, extra == 0 ? 32767 : 0);

        std::string words;
        for (std::size_t i = 0; i < 32767 + extra; ++i)
            words += "w ";
        TxCmdArr(words, n);
        EXPECT_EQ(n, 32767);
        EXPECT_EQ(TxCmdArg().size(), 32768u);
    }
}

TEST(TxDlm, TakesTheFirstBlockWithoutNesting) {
    const std::tuple<const char*, const char*, Words, std::int16_t> cases[] = {
        {"a[b]c", "[]", {"a", "b", "c"}, 3},     {"a[b", "[]", {"a[b", "", ""}, 0},
        {"[a[b]c]", "[]", {"", "a[b", "c]"}, 5}, {"a]b[c", "[]", {"a]b[c", "", ""}, 0},
        {"[]", "[]", {"", "", ""}, 2},           {"[a-b]", "[-]", {"", "a-b", ""}, 5}};
    for (const auto& [tx, dl, parts, length] : cases) {
        std::string bef = "x", inn = "x", aft = "x";
        std::int16_t lng = -1;
        TxDlm(tx, bef, inn, aft, lng, dl);
        EXPECT_EQ(std::make_tuple(Words({bef, inn, aft}), lng), std::make_tuple(parts, length))
            << tx;
    }
}

TEST(TxBlk, FindsTheBlockSkippingInnerBlocks) {
    const std::tuple<const char*, std::int16_t, const char*, std::int16_t, std::int16_t> cases[] = {
        {"[a[b]c[d]e]", 1, "[]", 1, 11}, {"[a[b[c]]d]", 1, "[]", 1, 8}, {"x[a]y", 1, "[]", 2, 4},
        {"[a][b]", 2, "[]", 4, 6},       {"[a[b]", 1, "[]", 0, 0},      {"[a]", 4, "[]", 0, 0},
        {"say \"hi\" now", 1, "", 5, 8}, {"[a]", 0, "[]", 1, 3}};
    for (const auto& [tx, from, dl, e1, e2] : cases) {
        std::int16_t p1 = from, p2 = -1;
        TxBlk(tx, p1, p2, dl);
        EXPECT_EQ(std::make_tuple(p1, p2), std::make_tuple(e1, e2)) << tx;
    }
}

TEST(VlNum, ConvertsIntoTheTargetKindAndGivesZeroOnFailure) {
    const std::tuple<Variant, Variant, Variant> cases[] = {
        {Variant("32767"), kInt16, Variant(std::int16_t{32767})},
        // Rounding is half to even; a value that rounds outside the target's range gives 0.
        {Variant("2.5"), kInt16, Variant(std::int16_t{2})},
        {Variant(-3.5), kInt16, Variant(std::int16_t{-4})},
        {Variant(32767.5), kInt16, Variant(std::int16_t{0})},
        {Variant(-32768.5), kInt16, Variant(std::int16_t{-32768})},
        {Variant(2147483647.5), kInt32, Variant(std::int32_t{0})},
        {Variant::null(), kInt16, Variant(std::int16_t{0})},
        {Variant("70000"), kInt32, Variant(std::int32_t{70000})},
        {Variant("1.5E3"), kText, Variant("1500")},
        {Variant("abc"), kText, Variant("0")}};
    for (const auto& [v, target, expected] : cases) {
        Variant n = target;
        VlNum(v, n);
        EXPECT_EQ(n, expected) << VlStr(v);
    }
}

// The canonical text of a number has no zero before its point; the regional one is the host's.
TEST(VlTxAndVlMai, GiveTheCanonicalAndTheUpperCaseRegionalTexts) {
    CommaDecimalLocale comma;
    const std::tuple<Variant, const char*, const char*> cases[] = {
        // value, canonical text, VlMai
        {Variant("  a\xE7\xE3o "), "  a\xE7\xE3o ", "A\xC7\xC3O"},
        {Variant("\t\xF7\xFF\x9A\xB5\xDF"), "\t\xF7\xFF\x9A\xB5\xDF", "\t\xF7\x9F\x8A\xB5\xDF"},
        {Variant(1.25), "1.25", "1,25"},
        {Variant(-0.5), "-.5", "-0,5"},
        {Variant(0.5), ".5", "0,5"},
        {Variant(-0.0), "0", "0"},
        {Variant(1e16), "1E+16", "1E+16"},
        {Variant(0.000015), "1.5E-05", "1,5E-05"},
        {Variant::null(), "", ""}};
    for (const auto& [v, canonical, upper] : cases)
        EXPECT_EQ(std::make_tuple(VlStr(v), VlMai(v)), std::make_tuple(canonical, Variant(upper)));
    EXPECT_EQ(NumRead("1.5"), 1.5);  // the point reads the same whatever the locale
}

TEST(TxVl, TextTargetTakesTextAndOthersTheNumberOrTheirEmptyValue) {
    const std::tuple<const char*, Variant, Variant, std::int16_t> cases[] = {
        {" 12x", kText, Variant(" 12x"), 1},
        {"12", kDouble, Variant(12.0), 1},
        {"abc", kInt16, Variant(std::int16_t{0}), 1},
        {"70000", kInt16, Variant(std::int16_t{0}), 0},
        {"1E400", Variant(), Variant(0.0), 0}};
    for (const auto& [tx, target, expected, ok] : cases) {
        Variant v = target;
        std::int16_t got = 9;
        TxVl(tx, v, got);
        EXPECT_EQ(std::make_tuple(v, got), std::make_tuple(expected, ok)) << tx;
    }
    std::int16_t small = 4, ok16 = 9, ok32 = 9;
    std::int32_t big = 4;
    TxVl("40000", small, ok16);
    TxVl("70000", big, ok32);
    EXPECT_EQ(std::make_tuple(small, ok16, big, ok32), std::make_tuple(0, 0, 70000, 1));
}

TEST(VlSimNao, ReadsYesNoValuesAndWritesThemByTheTargetKind) {
    const Variant yes("Sim");
    const Variant no("N\xE3o");
    const std::tuple<Variant, Variant, std::int16_t, Variant> cases[] = {
        {Variant(" sim "), kText, 0, yes},
        {Variant("Si"), kInt16, 0, Variant(std::int16_t{1})},
        {Variant("\tsim"), kText, 0, no},
        {Variant("7"), kInt16, 0, Variant(std::int16_t{7})},
        {Variant(std::int16_t{1}), kInt16, 1, Variant(std::int16_t{0})},
        {Variant(1.0), Variant(), 0, Variant(std::int16_t{1})},
        {Variant(), kText, 1, yes}};
    for (const auto& [v, target, inv, expected] : cases) {
        Variant sai = target;
        VlSimNao(v, sai, inv);
        EXPECT_EQ(sai, expected) << VlStr(v) << " inv " << inv;
    }
}

}  // namespace
}  // namespace lumbra
