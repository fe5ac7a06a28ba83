#include "util/text/value.h"

#include <gtest/gtest.h>

#include <string>

#include "tests/util/text/comma_locale.h"
#include "util/text/chars.h"
#include "util/text/numeric.h"

namespace lumbra {
namespace {

const Variant kInt16{
    std::int16_t{9},
};
const Variant kInt32{
    std::int32_t{9},
};
const Variant kDouble{9.0};
const Variant kText{"x"};

struct CoercionCase {
    Variant v;
    Variant target;
    Variant expected;
};

TEST(VlNum, ConvertsIntoTheTargetKindAndGivesZeroOnFailure) {
    const CoercionCase cases[] = {
        {Variant("42"), kInt16, Variant(std::int16_t{42})},
        {Variant("2.5"), kInt16, Variant(std::int16_t{2})},
        {Variant("70000"), kInt16, Variant(std::int16_t{0})},
        {Variant("abc"), kInt16, Variant(std::int16_t{0})},
        {Variant(3.5), kInt16, Variant(std::int16_t{4})},
        {Variant("&H1B"), kInt16, Variant(std::int16_t{27})},
        {Variant("1,5"), kInt16, Variant(std::int16_t{1})},
        {Variant(), kInt16, Variant(std::int16_t{0})},
        {Variant::null(), kInt16, Variant(std::int16_t{0})},
        {Variant(std::int32_t{70000}), kInt16, Variant(std::int16_t{0})},
        {Variant("70000"), kInt32, Variant(std::int32_t{70000})},
        {Variant("2.5"), kDouble, Variant(2.5)},
        {Variant("1E400"), kDouble, Variant(0.0)},
        {Variant("&H123456789"), kInt32, Variant(std::int32_t{0})},
        {Variant("2.5"), Variant(), Variant(2.5)},
        {Variant(std::int16_t{5}), Variant(), Variant(5.0)},
        {Variant("0.5"), kText, Variant("0.5")},
        {Variant("1.5E3"), kText, Variant("1500")},
        {Variant("abc"), kText, Variant("0")},
        {Variant::null(), kText, Variant("0")},
    };
    for (const auto& c : cases) {
        Variant n = c.target;
        VlNum(c.v, n);
        EXPECT_EQ(n, c.expected) << VlStr(c.v) << " into kind " << static_cast<int>(n.kind());
    }
}

TEST(VlNum, TypedTargetsReceiveTheSameConversion) {
    std::int16_t small = 5;
    std::int32_t big = 5;
    double d = 5;
    std::string text = "x";
    VlNum(Variant("32767.5"), small);
    VlNum(Variant("&HFFFFFFFF"), big);
    VlNum(Variant("1D2"), d);
    VlNum(Variant(std::int16_t{12}), text);
    EXPECT_EQ(small, 0);
    EXPECT_EQ(big, -1);
    EXPECT_EQ(d, 100);
    EXPECT_EQ(text, "12");
    EXPECT_EQ(VlDbl(Variant(" 1 . 5 ")), 1.5);
}

TEST(VlTx, GivesTextUnchangedAndNumbersInCanonicalForm) {
    const struct {
        Variant v;
        const char* expected;
    } cases[] = {
        {Variant("  a "), "  a "},
        {Variant(1.25), "1.25"},
        {Variant(0.5), ".5"},
        {Variant(-0.5), "-.5"},
        {Variant(std::int16_t{12}), "12"},
        {Variant(std::int32_t{-70000}), "-70000"},
        {Variant(), ""},
        {Variant::null(), ""},
    };
    CommaDecimalLocale comma;
    for (const auto& c : cases)
        EXPECT_EQ(VlStr(c.v), c.expected);
}

TEST(TxMai, TrimsSpacesOnlyAndUpperCasesWindows1252Letters) {
    const struct {
        const char* tx;
        const char* expected;
    } cases[] = {
        {"  ab c ", "AB C"},
        {"\tab\t", "\tAB\t"},
        {"a\xE7\xE3o", "A\xC7\xC3O"},
        {"\xF7\xFF\x9A\xB5\xDF", "\xF7\x9F\x8A\xB5\xDF"},
        {"   ", ""},
    };
    for (const auto& c : cases)
        EXPECT_EQ(TxMai(c.tx), c.expected) << c.tx;
}

TEST(VlMai, GivesTheRegionalTextTrimmedAndUpperCased) {
    EXPECT_EQ(VlMai(Variant(1.25)), Variant("1.25"));
    EXPECT_EQ(VlMai(Variant(" sim ")), Variant("SIM"));
    EXPECT_EQ(VlMai(Variant()), Variant(""));
    EXPECT_EQ(VlMai(Variant::null()), Variant(""));
    CommaDecimalLocale comma;
    EXPECT_EQ(VlMai(Variant(1.25)), Variant("1,25"));
    EXPECT_EQ(VlMai(Variant(0.000015)), Variant("1,5E-05"));
}

TEST(TxDbl, ReadsTheRegionalTextOfANumber) {
    double d = 0;
    TxDbl(Variant(1.25), d);
    EXPECT_EQ(d, 1.25);
    CommaDecimalLocale comma;
    TxDbl(Variant(1.25), d);
    EXPECT_EQ(d, 1);
    TxDbl(Variant("1.25"), d);
    EXPECT_EQ(d, 1.25);
}

TEST(TxDbl, NullIsTheOneErrorPassedToTheCaller) {
    double d = 0;
    EXPECT_THROW(TxDbl(Variant::null(), d), InvalidUseOfNull);
    Variant target(std::int16_t{3});
    TxDbl(Variant("70000"), target);
    EXPECT_EQ(target, Variant(std::int16_t{0}));
}

TEST(TxVl, TextTargetTakesTextAndOthersTheNumberOrTheirEmptyValue) {
    const struct {
        const char* tx;
        Variant target;
        Variant expected;
        std::int16_t ok;
    } cases[] = {
        {"12", kText, Variant("12"), 1},
        {" 12x", kText, Variant(" 12x"), 1},
        {"12", kDouble, Variant(12.0), 1},
        {"2.5", Variant(), Variant(2.5), 1},
        {"&HFFFFFFFF", kInt32, Variant(std::int32_t{-1}), 1},
        {"abc", kInt16, Variant(std::int16_t{0}), 1},
        {"70000", kInt16, Variant(std::int16_t{0}), 0},
        {"1E400", kDouble, Variant(0.0), 0},
        {"1E400", Variant(), Variant(0.0), 0},
        {"&H123456789", kInt32, Variant(std::int32_t{0}), 0},
    };
    for (const auto& c : cases) {
        Variant v = c.target;
        std::int16_t ok = 9;
        TxVl(c.tx, v, ok);
        EXPECT_EQ(v, c.expected) << c.tx;
        EXPECT_EQ(ok, c.ok) << c.tx;
    }
    std::string text = "old";
    std::int16_t small = 4;
    std::int16_t ok = 9;
    TxVl("1.5", text, ok);
    EXPECT_EQ(text, "1.5");
    TxVl("40000", small, ok);
    EXPECT_EQ(small, 0);
    EXPECT_EQ(ok, 0);
}

TEST(VlSimNao, ReadsYesNoValuesAndWritesThemByTheTargetKind) {
    const Variant yes("Sim");
    const Variant no("N\xE3o");
    const struct {
        Variant v;
        Variant sai;
        std::int16_t inv;
        Variant expected;
    } cases[] = {
        {Variant(" sim "), kText, 0, yes},
        {Variant("Si"), kInt16, 0, Variant(std::int16_t{1})},
        {Variant("SIMM"), kInt16, 0, Variant(std::int16_t{0})},
        {Variant("\tsim"), kText, 0, no},
        {Variant("N\xC3O"), kText, 0, no},
        {Variant("1"), kText, 0, yes},
        {Variant("7"), kInt16, 0, Variant(std::int16_t{7})},
        {Variant("7"), kText, 0, no},
        {Variant("7"), kInt16, 1, Variant(std::int16_t{1})},
        {Variant(std::int16_t{1}), kInt16, 1, Variant(std::int16_t{0})},
        {Variant(std::int16_t{7}), kInt16, 0, Variant(std::int16_t{0})},
        {Variant(1.0), kDouble, 0, Variant(1.0)},
        {Variant(1.0), Variant(), 0, Variant(std::int16_t{1})},
        {Variant(), kText, 1, yes},
        {Variant::null(), kInt16, 0, Variant(std::int16_t{0})},
    };
    for (const auto& c : cases) {
        Variant sai = c.sai;
        VlSimNao(c.v, sai, c.inv);
        EXPECT_EQ(sai, c.expected) << VlStr(c.v) << " inv " << c.inv;
    }
    std::string text;
    std::int16_t flag = 5;
    VlSimNao(Variant("SIM"), text);
    VlSimNao(Variant("SIM"), flag, 1);
    EXPECT_EQ(text, "Sim");
    EXPECT_EQ(flag, 0);
}

}  // namespace
}  // namespace lumbra
