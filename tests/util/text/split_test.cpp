#include "util/text/split.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace lumbra {
namespace {

using Words = std::vector<std::string>;

TEST(TxSep, CutsAtTheFirstSeparatorSkippingOneCharacter) {
    const struct {
        const char* tx;
        const char* sep;
        const char* pt;
        const char* rest;
        std::int16_t ok;
    } cases[] = {
        {"COM1:9600", ":", "COM1", "9600", 1},
        {"9600", ":", "9600", "", 0},
        {":x", ":", "", "x", 1},
        {"a:", ":", "a", "", 1},
        {"a:b:c", ":", "a", "b:c", 1},
        {"a<-b", "<-", "a", "-b", 1},
        {"aXb", "x", "aXb", "", 0},
        {"abc", "", "", "bc", 1},
        {"", "", "", "", 0},
        {"", ":", "", "", 0},
    };
    for (const auto& c : cases) {
        std::string tx = c.tx, pt = "old", pt1, pt2, restC, ptS, txS = c.tx;
        std::int16_t ok = 9, ok2 = 9;
        TxSep(tx, c.sep, pt, ok);
        EXPECT_EQ(pt, c.pt) << c.tx;
        EXPECT_EQ(tx, c.rest) << c.tx;
        EXPECT_EQ(ok, c.ok) << c.tx;
        TxSep2(c.tx, c.sep, pt1, pt2, ok2);
        EXPECT_EQ(Words({pt1, pt2}), Words({c.pt, c.rest})) << c.tx;
        EXPECT_EQ(ok2, c.ok) << c.tx;
        TxSepC(c.tx, c.sep, ptS, restC);
        EXPECT_EQ(Words({ptS, restC}), Words({c.pt, c.rest})) << c.tx;
        TxSepS(txS, c.sep, ptS);
        EXPECT_EQ(Words({ptS, txS}), Words({c.pt, c.rest})) << c.tx;
    }
}

TEST(TxSep, OutputMayBeTheSameStringAsTheInput) {
    std::string s = "a,b";
    std::string rest;
    std::int16_t ok = 0;
    TxSep2(s, ",", s, rest, ok);
    EXPECT_EQ(s, "a");
    EXPECT_EQ(rest, "b");
}

TEST(TxSepMo, ModeDecidesWhereEachPartGoes) {
    const struct {
        const char* mo;
        const char* tx;
        const char* sep;
        const char* newTx;
        const char* pt;
    } cases[] = {
        {"PE T", " k = v ", "=", "k", "v"},
        {"PS", "abc", ":", "abc", ""},
        {"PE", "abc", ":", "", "abc"},
        {"PS", "N:PORTA", ":", "PORTA", "N"},
        {"PE", "a:b", ":", "a", "b"},
        {"SE T", "ZON  x y ", " ", "ZON", "x y"},
        {"SE T", "ZON", " ", "ZON", ""},
        {"RS", "a=b", "=", "a", "b"},
        {"RS", "ab", "=", "ab", ""},
        {"XX", "a=b", "=", "b", "a"},
        {"XX", "ab", "=", "", "ab"},
        {"pe", "a=b", "=", "b", "a"},
        {"PE MT", "ide.nome ", ".", "IDE", "NOME"},
        {"PE M", "a.b c ", ".", "A", "B C "},
        {"PE t", " a = b ", "=", " a ", " b "},
    };
    for (const auto& c : cases) {
        std::string tx = c.tx, pt = "old";
        TxSepMo(c.mo, tx, c.sep, pt);
        EXPECT_EQ(tx, c.newTx) << c.mo << " / " << c.tx;
        EXPECT_EQ(pt, c.pt) << c.mo << " / " << c.tx;
    }
}

TEST(TxArr, GivesEveryFieldBehindAnEmptySlotZero) {
    const struct {
        const char* tx;
        const char* sep;
        Words arr;
    } cases[] = {
        {"1,2,3", ",", {"", "1", "2", "3"}}, {"a,,b", ",", {"", "a", "", "b"}},
        {"a,b,", ",", {"", "a", "b"}},       {",a", ",", {"", "", "a"}},
        {"abc", ";", {"", "abc"}},           {"", ",", {""}},
    };
    for (const auto& c : cases) {
        Words arr = {"stale", "x"};
        std::int16_t n = -1;
        TxArr(c.tx, c.sep, arr, n);
        EXPECT_EQ(arr, c.arr) << c.tx;
        EXPECT_EQ(n, static_cast<std::int16_t>(c.arr.size() - 1)) << c.tx;
    }
}

TEST(TxArr, ManyFieldsEndAtTheirExactCount) {
    for (int count : {10, 11, 21}) {
        std::string tx;
        for (int i = 1; i <= count; ++i)
            tx += std::to_string(i) + ",";
        Words arr;
        std::int16_t n = 0;
        TxArr(tx, ",", arr, n);
        EXPECT_EQ(n, count);
        ASSERT_EQ(arr.size(), static_cast<std::size_t>(count + 1));
        EXPECT_EQ(arr.back(), std::to_string(count));
    }
}

// Positions and counts are 16-bit: at the limit the text is taken, past it refused, never wrapped.
TEST(SixteenBitLimits, TextsPastThemAreRefusedNotWrapped) {
    for (const std::size_t extra : {0u, 1u}) {
        Words arr;
        std::int16_t n = -1;
        TxArr(std::string(32767 + extra, '/'), "/", arr, n);
        EXPECT_EQ(n, extra == 0 ? 32767 : 0);
        EXPECT_EQ(arr.size(), static_cast<std::size_t>(n) + 1);

        const std::string block = "[" + std::string(32765 + extra, 'x') + "]";
        std::string bef, inn, aft;
        std::int16_t lng = -1;
        TxDlm(block, bef, inn, aft, lng, "[]");
        EXPECT_EQ(lng, extra == 0 ? 32767 : 0);
        EXPECT_EQ(bef, extra == 0 ? "" : block);

        std::int16_t p1 = 1;
        std::int16_t p2 = -1;
        TxBlk(block, p1, p2, "[]");
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
    const struct {
        const char* tx;
        const char* dl;
        Words parts;
        std::int16_t lng;
    } cases[] = {
        {"a[b]c", "[]", {"a", "b", "c"}, 3},     {"a[b", "[]", {"a[b", "", ""}, 0},
        {"[a[b]c]", "[]", {"", "a[b", "c]"}, 5}, {"a]b[c", "[]", {"a]b[c", "", ""}, 0},
        {"[]", "[]", {"", "", ""}, 2},           {"[a-b]", "[-]", {"", "a-b", ""}, 5},
        {"a[b]c", "", {"a[b]c", "", ""}, 0},
    };
    for (const auto& c : cases) {
        std::string bef = "x", inn = "x", aft = "x";
        std::int16_t lng = -1;
        TxDlm(c.tx, bef, inn, aft, lng, c.dl);
        EXPECT_EQ(Words({bef, inn, aft}), c.parts) << c.tx;
        EXPECT_EQ(lng, c.lng) << c.tx;
    }
}

TEST(TxDlm2, ClosesAtTheSecondDelimiterCharacter) {
    std::string bef, inn, aft;
    TxDlm2("[a-b]", "[-]", bef, inn, aft);
    EXPECT_EQ(Words({bef, inn, aft}), Words({"", "a", "b]"}));
    TxDlm2("x(y)z", "()", bef, inn, aft);
    EXPECT_EQ(Words({bef, inn, aft}), Words({"x", "y", "z"}));
    TxDlm2("x(y)z", "(", bef, inn, aft);
    EXPECT_EQ(Words({bef, inn, aft}), Words({"x(y)z", "", ""}));
}

TEST(TxBlk, FindsTheBlockSkippingConsecutiveInnerBlocks) {
    const struct {
        const char* tx;
        std::int16_t from;
        const char* dl;
        std::int16_t p1;
        std::int16_t p2;
    } cases[] = {
        {"[a[b]c[d]e]", 1, "[]", 1, 11}, {"[a[b[c]]d]", 1, "[]", 1, 8}, {"x[a]y", 1, "[]", 2, 4},
        {"x[a]y[b]", 5, "[]", 6, 8},     {"[a][b]", 2, "[]", 4, 6},     {"[a[b]", 1, "[]", 0, 0},
        {"[a", 1, "[]", 0, 0},           {"abc", 1, "[]", 0, 0},        {"[a]", 4, "[]", 0, 0},
        {"say \"hi\" now", 1, "", 5, 8}, {"[a]", 0, "[]", 1, 3},
    };
    for (const auto& c : cases) {
        std::int16_t p1 = c.from, p2 = -1;
        TxBlk(c.tx, p1, p2, c.dl);
        EXPECT_EQ(p1, c.p1) << c.tx;
        EXPECT_EQ(p2, c.p2) << c.tx;
    }
}

TEST(TxLpz, RemovesCharactersOfTheSetByMode) {
    const struct {
        std::int16_t mo;
        const char* tx;
        const char* chs;
        const char* sai;
    } cases[] = {
        {3, "--a-b--", "-", "a-b"},   {0, "--a-b--", "-", "ab"},    {1, "---", "-", ""},
        {1, "--a-b--", "-", "a-b--"}, {2, "--a-b--", "-", "--a-b"}, {2, "---", "-", ""},
        {3, "xyabcyx", "xy", "abc"},  {0, "a\"b\"", "\"", "ab"},    {4, "--a--", "-", "--a--"},
        {3, "-abc-", "", "-abc-"},    {0, "abc", "", "abc"},
    };
    for (const auto& c : cases) {
        std::string sai = "old";
        TxLpz(c.mo, c.tx, c.chs, sai);
        EXPECT_EQ(sai, c.sai) << c.mo << " " << c.tx;
    }
}

TEST(TxCmdArr, SplitsAtSpacesOnlyAndKeepsTheWholeTextInSlotZero) {
    const struct {
        const char* cmd;
        Words words;
    } cases[] = {
        {"  -FP  x.par ", {"  -FP  x.par ", "-FP", "x.par"}},
        {"one", {"one", "one"}},
        {"a\tb \"c d\"", {"a\tb \"c d\"", "a\tb", "\"c", "d\""}},
        {"   ", {"   "}},
        {"", {""}},
    };
    for (const auto& c : cases) {
        std::int16_t n = -1;
        TxCmdArr(c.cmd, n);
        EXPECT_EQ(TxCmdArg(), c.words) << c.cmd;
        EXPECT_EQ(n, static_cast<std::int16_t>(c.words.size() - 1)) << c.cmd;
    }
}

}  // namespace
}  // namespace lumbra
