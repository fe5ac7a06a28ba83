// The memory table: registration under the index name, lookups by name and by number, and the
// typed value rule of its queries.

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/options/open_tda_opc.h"

namespace lumbra::test {
namespace {

// Prepares each line as the current parameter and registers it; the count that results.
std::int16_t Register(TdaOpc& opc, const std::vector<std::string>& lines, std::int16_t reg = 0) {
    std::int16_t cnt = 0;
    for (const auto& line : lines) {
        opc.MemOpcPrp(line);
        opc.MemReg(cnt, reg);
    }
    return cnt;
}

TEST(MemoryTable, FindsEntriesByTheirIndexNameWithTheTypedValueRule) {
    TdaOpc opc;
    EXPECT_EQ(Register(opc, {"Porta [PORTA] = COM1", "Vel [VEL]=9600", "x [DEF.DbgModo] = 1",
                             "y [ a . b ]=2", "Pausa = 5", "Esc [ESC]=&H1B", "Vel [vel]=19200"}),
              6);
    const struct {
        std::string name;
        Variant target, value;
        std::int16_t exi;
        std::string tpp;
    } cases[] = {
        {"porta ", Variant(""), Variant(" COM1"), 1, "="},
        {"porta", Variant(1.0), Variant(0.0), 1, "="},
        {"VEL", Variant(std::int16_t{0}), Variant(9600.0), 1, "="},
        {"DbgModo", Variant(), Variant(1.0), 1, "="},
        {"DEF.DBGMODO", Variant(""), Variant(""), 0, ""},
        {"DEF.DBGMODO", Variant(2.0), Variant(std::int16_t{0}), 0, ""},
        {"B", Variant(""), Variant("2"), 1, "="},
        {"ESC", Variant(1.0), Variant(27.0), 1, "="},
        {"", Variant(""), Variant(""), 0, ""},
    };
    for (const auto& c : cases) {
        Variant vp = c.target;
        std::int16_t exi = -1;
        std::string tpp = "old";
        opc.MemCon(c.name, vp, exi, tpp);
        EXPECT_EQ(vp, c.value) << c.name;
        EXPECT_EQ(exi, c.exi) << c.name;
        EXPECT_EQ(tpp, c.tpp) << c.name;
    }
    // The second VEL is reachable by number only.
    std::string var;
    Variant vp = 0.0;
    opc.MemConIdx(6, var, vp);
    EXPECT_EQ(var, "VEL");
    EXPECT_EQ(vp, Variant(19200.0));
}

TEST(MemoryTable, MemIdxUsaAndMemConTxpFindEntriesByNameOrRoundedNumber) {
    TdaOpc opc;
    Register(opc, {"Porta [PORTA]=1", "Vel [VEL]=2", "C [C]=3", "D [D]=4"});
    const struct {
        Variant op;
        std::int16_t idx;
        std::string txp;
    } cases[] = {
        {Variant(2.5), 2, "Vel [VEL]=2"},
        {Variant(3.5), 4, "D [D]=4"},
        {Variant(-0.5), 0, ""},
        {Variant(" vel "), 2, "Vel [VEL]=2"},
        {Variant("NADA"), -1, ""},
        {Variant(70000.0), -1, ""},
        {Variant(), 0, ""},
        {Variant(std::int16_t{5}), 5, ""},
    };
    for (const auto& c : cases) {
        std::int16_t idx = 99;
        opc.MemIdxUsa(c.op, idx);
        EXPECT_EQ(idx, c.idx) << c.txp;
        std::string txp = "old";
        std::int16_t exi = -1;
        opc.MemConTxp(c.op, txp, exi);
        EXPECT_EQ(txp, c.txp);
        EXPECT_EQ(exi, c.idx >= 0 && c.idx <= 4 ? 1 : 0) << "number 0 is the empty entry";
    }
}

TEST(MemoryTable, RegistersLinesWithoutNameOnlyWhenAskedTo) {
    OpenTdaOpc opc;
    EXPECT_EQ(Register(opc, {"' nota", "Pausa = 5"}), 0);
    EXPECT_EQ(opc.memory().size(), 1U);
    EXPECT_EQ(Register(opc, {"' nota", "Pausa = 5"}, 1), 2);
    std::string var = "old";
    std::string tpp;
    std::int16_t exi = 0;
    Variant vp = "";
    opc.MemConIdx(2, var, vp, tpp, exi);
    EXPECT_EQ(var, "");
    EXPECT_EQ(tpp, "=");
    EXPECT_EQ(vp, Variant(" 5"));
    // Past the table: the empty value of the target's kind.
    vp = 1.0;
    opc.MemConIdx(3, var, vp, tpp, exi);
    EXPECT_EQ(exi, 0);
    EXPECT_EQ(vp, Variant(std::int16_t{0}));
}

TEST(MemoryTable, AnEntryIsACopyOfTheCurrentParameterAndALowCountCutsTheTable) {
    OpenTdaOpc opc;
    Register(opc, {"A [A]=1", "B [B]=2", "C [C]=3"});
    opc.setConversion(0);
    opc.MemOpcPrp("Cmd [CMD] = chr$(27)@", 1);
    const ParReg want{"Cmd [CMD] = \x1B@", "Cmd", "=", "CMD", " \x1B@", 12, 0.0, 1};
    EXPECT_EQ(opc.current(), want) << "decoded whatever the conversion switch says";
    std::int16_t cnt = 1;
    opc.MemReg(cnt);
    EXPECT_EQ(cnt, 2);
    EXPECT_EQ(opc.memory(), (std::vector<ParReg>{ParReg{}, opc.memory()[1], want}));
    // The counter is not checked: -1 resizes the table to element 0 alone and stores there.
    cnt = -1;
    opc.MemReg(cnt);
    EXPECT_EQ(cnt, 0);
    EXPECT_EQ(opc.memory(), std::vector<ParReg>{want});
}

TEST(MemoryTable, MemOpcRegAppendsAVariableWithItsValue) {
    OpenTdaOpc opc;
    Register(opc, {"A [A]=1"});
    opc.MemOpcReg("DbgModo", Variant(std::int16_t{1}));
    opc.MemOpcReg("Meio", Variant(0.5));
    opc.MemOpcReg(" ", Variant("sem nome"));
    ASSERT_EQ(opc.memory().size(), 4U);
    EXPECT_EQ(opc.memory()[2], (ParReg{"", "", "", "DbgModo", "1", 0, 1.0, 0}));
    EXPECT_EQ(opc.memory()[3].vtx, ".5");
    Variant vp = 0.0;
    opc.MemCon("dbgmodo", vp);
    EXPECT_EQ(vp, Variant(1.0));
}

}  // namespace
}  // namespace lumbra::test
