#include "util/text/literal.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace lumbra {
namespace {

using namespace std::string_literals;

std::string Decoded(const std::string& tx) {
    std::string out = tx;
    TxCnvChr(out);
    return out;
}

TEST(TxCnvChr, DecodesCodeListsToTheExactBytes) {
    const struct {
        std::string tx;
        std::string expected;
    } cases[] = {
        {"chr$(27)p",
         "\x1B"
         "p"},
        {"chr$(27,112,0,25,250)", "\x1Bp\0\x19\xFA"s},
        {"AB bin$(13,10)", "AB \r\n"},
        {"chr$(&H1B)xchr$(&O101)", "\x1BxA"},
        {"chr$( 6 5 )", "A"},
        {"chr$(\t6\n5)", "A"},
        {"chr$(65.5)", "B"},
        {"chr$(66.5)", "B"},
        {"chr$(,65)", "\0A"s},
        {"chr$(65,)", "A"},
        {"chr$(65,,66)", "A\0B"s},
        {"chr$()", ""},
        {"bin$()", ""},
        {"x chr$(65", "x A"},
        {"abc bin$(", "abc "},
        {"chr$(300)", ""},
        {"chr$(-1)", ""},
        {"chr$(256,65)", "A"},
        {"CHR$(65)", "CHR$(65)"},
        {"Chr$(65)", "Chr$(65)"},
        {"chr$ (65)", "chr$ (65)"},
        {"$(65)", "$(65)"},
        {"a)b chr$(66)c)", "a)b Bc)"},
        {"chr$(65)chr$(66)", "AB"},
        {"chrchr$(65)", "chrA"},
        {"chr$chr$(65)", "chr$A"},
        {"chr$(65chr$(66)", "A"},
        {"chr$(&H1chr$(66)", "\x1B"},
        {"chr$(&H1C)", "\x1C"},
        {"", ""},
    };
    for (const auto& c : cases)
        EXPECT_EQ(Decoded(c.tx), c.expected) << c.tx;
}

TEST(TxCnvChr, FieldOutsideSixteenBitsRepeatsTheLastCode) {
    const struct {
        const char* tx;
        std::string expected;
    } cases[] = {
        {"chr$(65,70000)", "AA"},  {"chr$(70000,66)", "\0B"s},      {"chr$(65,1E400)", "AA"},
        {"chr$(65,256,1E9)", "A"}, {"chr$(65)chr$(70000)", "A\0"s},
    };
    for (const auto& c : cases)
        EXPECT_EQ(Decoded(c.tx), c.expected) << c.tx;
}

TEST(TxCnvChr, EveryCodeGivesItsOwnByte) {
    std::string all = "chr$(";
    std::string expected;
    for (int code = 0; code <= 255; ++code) {
        const char byte = static_cast<char>(code);
        const std::string hex = "&H" + std::string(1, "0123456789ABCDEF"[code / 16]) +
                                std::string(1, "0123456789ABCDEF"[code % 16]);
        EXPECT_EQ(Decoded("chr$(" + std::to_string(code) + ")"), std::string(1, byte)) << code;
        EXPECT_EQ(Decoded("<bin$(" + hex + ")>"), "<"s + byte + ">") << hex;
        all += std::to_string(code) + (code < 255 ? "," : ")");
        expected.push_back(byte);
    }
    EXPECT_EQ(Decoded(all), expected);
}

TEST(TxCnvChr, GivenATargetLeavesTheTextAlone) {
    const std::string tx = "a chr$(66)";
    Variant sai(std::int16_t{4});
    std::string text;
    TxCnvChr(tx, sai);
    TxCnvChr(tx, text);
    EXPECT_EQ(sai, Variant("a B"));
    EXPECT_EQ(text, "a B");
    EXPECT_EQ(tx, "a chr$(66)");
}

TEST(TxSub, ReplacesFirstOrEveryOccurrenceAndNeverLoops) {
    const struct {
        const char* modo;
        const char* tx;
        const char* ant;
        const char* nov;
        const char* expected;
    } cases[] = {
        {"R", "a.b.c", ".", ",", "a,b,c"},
        {"", "a.b.c", ".", ",", "a,b.c"},
        {"r", "a.b.c", ".", ",", "a,b.c"},
        {"R", "chr$(1)chr$(2)", "chr$(", "bin$(", "bin$(1)bin$(2)"},
        {"R", "aaa", "a", "aa", "aaa"},
        {"R", "abc", "", "x", "abc"},
        {"R", "xyz", "q", "r", "xyz"},
        {"R", "aabb", "ab", "", ""},
        {"R", "aab", "ab", "b", "b"},
        {"R", "Abc", "a", "x", "Abc"},
    };
    for (const auto& c : cases) {
        std::string tx = c.tx;
        TxSub(c.modo, tx, c.ant, c.nov);
        EXPECT_EQ(tx, c.expected) << c.modo << " " << c.tx;
    }
}

TEST(TxSepL, SkipsTheWholeSeparator) {
    const struct {
        const char* tx;
        const char* sep;
        const char* pt;
        const char* rest;
    } cases[] = {
        {"abc bin$(65)", "bin$(", "abc ", "65)"},
        {"a<-b", "<-", "a", "b"},
        {"x<-", "<-", "x", ""},
        {"abc", "x", "abc", ""},
        {"abc", "", "abc", ""},
    };
    for (const auto& c : cases) {
        std::string tx = c.tx, pt = "old";
        TxSepL(tx, c.sep, pt);
        EXPECT_EQ(pt, c.pt) << c.tx;
        EXPECT_EQ(tx, c.rest) << c.tx;
    }
}

TEST(TxChrLst, TakesTextListsAndNumbersAndSkipsBadCodes) {
    const struct {
        std::vector<Variant> lst;
        std::string expected;
    } cases[] = {
        {{Variant("65,66")}, "AB"},
        {{Variant(std::int16_t{67})}, "C"},
        {{Variant("65"), Variant(66.0), Variant(std::int32_t{300}), Variant("-1,67")}, "ABC"},
        {{Variant(65.5), Variant(std::int32_t{255})}, "B\xFF"},
        {{Variant(1e10), Variant(-0.6)}, ""},
        {{Variant(), Variant::null()}, ""},
        {{Variant("65,70000"), Variant("70000")}, "AAA"},
        {{}, ""},
    };
    for (const auto& c : cases)
        EXPECT_EQ(TxChrLst(c.lst), c.expected);
}

TEST(TxNumSep, ReadsTheFirstFieldAndKeepsTheTargetWhenItDoesNotFit) {
    const struct {
        const char* tx;
        const char* sep;
        std::int16_t n;
        const char* rest;
    } cases[] = {
        {"12,34", ",", 12, "34"}, {"12", ",", 12, ""},     {"", ",", 0, ""},
        {"70000,5", ",", 9, "5"}, {"1<-2", "<-", 1, "-2"}, {"&H1B;x", ";", 27, "x"},
    };
    for (const auto& c : cases) {
        std::string tx = c.tx;
        std::int16_t n = 9;
        TxNumSep(tx, c.sep, n);
        EXPECT_EQ(n, c.n) << c.tx;
        EXPECT_EQ(tx, c.rest) << c.tx;
    }
    std::string tx = "1.5,2";
    Variant text("x"), empty;
    double d = 0;
    TxNumSep(tx, ",", text);
    TxNumSep(tx, ",", empty);
    EXPECT_EQ(text, Variant("1.5"));
    EXPECT_EQ(empty, Variant(2.0));
    tx = "2.5";
    TxNumSep(tx, ",", d);
    EXPECT_EQ(d, 2.5);
}

}  // namespace
}  // namespace lumbra
