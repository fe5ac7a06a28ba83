#include "util/text/numeric.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string>

#include "tests/util/text/comma_locale.h"

namespace lumbra {
namespace {

struct ReadCase {
    const char* tx;
    double expected;
};

TEST(NumRead, ReadsEveryNotationAndStopsAtTheFirstUnfitCharacter) {
    const ReadCase cases[] = {
        {"27", 27},
        {"&H1B", 27},
        {"&O33", 27},
        {"& H 1 B", 27},
        {"&HFF", 255},
        {"&H8000", -32768},
        {"&HFFFF", -1},
        {"&H0FFFF", -1},
        {"&H10000", 65536},
        {"&H80000000", -2147483648.0},
        {"&HFFFFFFFF", -1},
        {"&O177777", -1},
        {"&O37777777777", -1},
        {"&H1BG", 27},
        {"&", 0},
        {"&X1", 0},
        {"-&H1B", 0},
        {" 1 2 ", 12},
        {"\t1\n2", 12},
        {"1\r2", 1},
        {"1.5E3", 1500},
        {"1D3", 1000},
        {"1d-2", 0.01},
        {"1 E 2", 100},
        {"1E", 1},
        {"12AB", 12},
        {"0x1B", 0},
        {"", 0},
        {"abc", 0},
        {"1,5", 1},
        {"-.5", -0.5},
        {"- 7", -7},
        {"--7", 0},
        {"1.2.3", 1.2},
        {"000.00125", 0.00125},
        {"123456789012345678901234567890", 1.2345678901234568e29},
        {"0.000000000000000000000000000001", 1e-30},
        {"1E-400", 0},
    };
    for (const auto& c : cases) {
        double d = -99;
        EXPECT_TRUE(NumRead(c.tx, d)) << c.tx;
        EXPECT_EQ(d, c.expected) << c.tx;
    }
}

TEST(NumRead, NegativeZeroReadsAsPlainZero) {
    EXPECT_FALSE(std::signbit(NumRead("-0")));
    EXPECT_FALSE(std::signbit(NumRead("-")));
}

TEST(NumRead, OverflowFailsAndReadsAsZero) {
    for (const char* tx : {"1E400", "-1D999", "&H123456789", "&H1FFFFFFFF", "&O40000000000"}) {
        double d = 5;
        EXPECT_FALSE(NumRead(tx, d)) << tx;
        EXPECT_EQ(d, 0) << tx;
    }
}

TEST(NumRead, PointIsTheDecimalSeparatorWhateverTheLocale) {
    CommaDecimalLocale comma;
    EXPECT_EQ(NumRead("1.5"), 1.5);
    EXPECT_EQ(NumRead("1,5"), 1);
}

struct RoundCase {
    double d;
    bool ok;
    int expected;
};

TEST(NumToInt16, RoundsHalfToEvenAndFailsOutsideTheRange) {
    const RoundCase cases[] = {
        {2.5, true, 2},           {3.5, true, 4},
        {-3.5, true, -4},         {2.5000001, true, 3},
        {32767.4, true, 32767},   {32766.5, true, 32766},
        {32767.5, false, 0},      {-32768.5, true, -32768},
        {-32768.51, false, 0},    {-32769, false, 0},
        {std::nan(""), false, 0}, {std::numeric_limits<double>::infinity(), false, 0},
    };
    for (const auto& c : cases) {
        std::int16_t n = 77;
        EXPECT_EQ(NumToInt16(c.d, n), c.ok) << c.d;
        EXPECT_EQ(n, c.ok ? c.expected : 77) << c.d;
    }
}

TEST(NumToInt32, RoundsHalfToEvenAndFailsOutsideTheRange) {
    const struct {
        double d;
        bool ok;
        std::int32_t expected;
    } cases[] = {
        {2147483646.5, true, 2147483646},
        {2147483647.5, false, 0},
        {-2147483648.5, true, -2147483647 - 1},
        {-2147483649.0, false, 0},
        {70000.5, true, 70000},
    };
    for (const auto& c : cases) {
        std::int32_t n = 0;
        EXPECT_EQ(NumToInt32(c.d, n), c.ok) << c.d;
        EXPECT_EQ(n, c.ok ? c.expected : 0) << c.d;
    }
}

TEST(NumTx, GivesTheCanonicalTextWithoutLeadingZeroOrBlank) {
    const struct {
        double d;
        const char* expected;
    } cases[] = {
        {0.5, ".5"},
        {-0.5, "-.5"},
        {1.25, "1.25"},
        {0, "0"},
        {-0.0, "0"},
        {0.1 + 0.2, ".3"},
        {1.0 / 3, ".333333333333333"},
        {123456789012345, "123456789012345"},
        {1e16, "1E+16"},
        {0.0001, ".0001"},
        {0.000015, "1.5E-05"},
        {std::numeric_limits<double>::infinity(), ""},
        {std::nan(""), ""},
    };
    for (const auto& c : cases)
        EXPECT_EQ(NumTx(c.d), c.expected) << c.d;
}

TEST(NumTxRegional, UsesTheLocaleDecimalPointAndKeepsTheLeadingZero) {
    EXPECT_EQ(NumTxRegional(0.5), "0.5");
    CommaDecimalLocale comma;
    EXPECT_EQ(NumTxRegional(1.25), "1,25");
    EXPECT_EQ(NumTxRegional(-0.5), "-0,5");
    EXPECT_EQ(NumTxRegional(12), "12");
    EXPECT_EQ(NumTxRegional(0.000015), "1,5E-05");
}

}  // namespace
}  // namespace lumbra
