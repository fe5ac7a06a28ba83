// The logical-line reader on real files: classification line by line, continuation lines, the
// end-of-value marker, blank lines, and the value query built on it.

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/options/open_tda_opc.h"

namespace lumbra::test {
namespace {

const std::string kSeparator = "'" + std::string(79, '=');

TEST(LineReader, ClassifiesEveryLineOfAParameterFile) {
    TempDir dir;
    OpenTdaOpc opc;
    opc.tboPrp(ParameterFile(dir, "p.par",
                             {"", kSeparator,
                              "#DEF - Defini\xE7\xF5"
                              "es",
                              kSeparator, "Modo de depura\xE7\xE3o [DbgModo]=0",
                              "Direct\xF3rio base [DirBas] = C:\\Pos", "##"}));
    const struct {
        std::string tpp, var, vtx;
    } expected[] = {{"", "", ""},  {"'", "", ""},         {"#", "", ""},
                    {"'", "", ""}, {"=", "DBGMODO", "0"}, {"=", "DIRBAS", " C:\\Pos"},
                    {"##", "", ""}};
    for (const auto& line : expected) {
        opc.next();
        EXPECT_EQ(opc.current().ok, 1);
        EXPECT_EQ(opc.current().tpp, line.tpp) << opc.current().txp;
        EXPECT_EQ(opc.current().var, line.var) << opc.current().txp;
        EXPECT_EQ(opc.current().vtx, line.vtx) << opc.current().txp;
    }
    opc.next();
    EXPECT_EQ(opc.current(), ParReg{}) << "the end of the file gives the empty record, ok = 0";
}

TEST(LineReader, JoinsContinuationLinesAndDropsOneOpenAtTheEnd) {
    const struct {
        std::vector<std::string> physical;
        std::string logical;
    } cases[] = {
        {{"Texto [TX] = primeira parte +", "   + segunda parte +", "+terceira", "Fim"},
         "Texto [TX] = primeira parte  segunda parte terceira"},
        // Blanks after a leading "+" belong to the piece; a piece without it is taken as read.
        {{"V [V] =a+", "   +  b  ", "Fim"}, "V [V] =a  b"},
        {{"V [V] =a+", "  b  ", "Fim"}, "V [V] =a  b  "},
        {{"Texto [T] = abc   <-", "Fim"}, "Texto [T] = abc   "},
        {{"V [V] = a +<-", "b", "Fim"}, "V [V] = a b"},
        {{"+V [V] = 1  ", "Fim"}, "V [V] = 1"},
        {{"Gaveta [G] = chr$(27,112)+", "+bin$(&H41)", "Fim"},
         "Gaveta [G] = \x1Bp"
         "A"},
        {{"V [V] = 1", "Texto [TX] = parte +"}, ""},
    };
    for (const auto& c : cases) {
        TempDir dir;
        OpenTdaOpc opc;
        opc.tboPrp(ParameterFile(dir, "c.par", c.physical));
        const std::string first = opc.next();
        if (c.logical.empty()) {
            EXPECT_EQ(first, "V [V] = 1");
            EXPECT_EQ(opc.next(), "");
            EXPECT_EQ(opc.current().ok, 0);
        } else {
            EXPECT_EQ(first, c.logical);
            EXPECT_EQ(opc.next(), "Fim") << "the line after " << c.logical;
        }
    }
}

TEST(LineReader, LogicalLinesStopAtTheLongestALineMayBe) {
    const std::string piece(20000, 'a');
    const struct {
        std::vector<std::string> physical;
        std::string logical;
    } cases[] = {
        {{std::string(40000, 'b'), "Fim"}, std::string(32767, 'b')},
        {{piece + "+", "+" + piece + "+", piece, "Fim"}, std::string(32767, 'a')},
        // A zone header whose special option runs past the bound: cut, it names no option.
        {{"#X - [CNVCHR=" + std::string(33000, 'a') + "]", "Fim"},
         "#X - [CNVCHR=" + std::string(32767 - 13, 'a')},
    };
    for (const auto& c : cases) {
        TempDir dir;
        OpenTdaOpc opc;
        opc.tboPrp(ParameterFile(dir, "c.par", c.physical));
        EXPECT_EQ(opc.next(), c.logical);
        EXPECT_EQ(opc.next(), "Fim");
    }
}

TEST(LineReader, AZoneHeaderWithAnOptionPastTheBoundIsReadAsAZone) {
    TempDir dir;
    OpenTdaOpc opc;
    opc.ZonIni(ParameterFile(
        dir, "c.par",
        {"#X - [CNVCHR=" + std::string(33000, 'a') + "]", "V [V]=chr$(65)", "##", "#Y", "##"}));
    std::string ide, tip;
    std::int16_t cnt = 0;
    opc.ZonSeg(ide, tip, cnt);
    EXPECT_EQ(ide, "X");
    EXPECT_EQ(opc.conversion(), 1);
    ASSERT_EQ(cnt, 1);
    EXPECT_EQ(opc.memory().at(1).txp, "V [V]=A") << "decoded: the option named no CnvChr";
    opc.ZonSeg(ide, tip, cnt);
    EXPECT_EQ(ide, "Y");
}

TEST(LineReader, SkipsEmptyLinesAndReadsOnToAssignments) {
    TempDir dir;
    OpenTdaOpc opc;
    opc.tboPrp(ParameterFile(
        dir, "b.par", {"", "", "   ", "' nota = 1", "#LIG", "ab=1", "$x = 1", "", "V [V]=1"}));
    std::string tpp;
    std::int16_t ok = 0;
    opc.LerLinCnt(tpp, ok);
    EXPECT_EQ(tpp, "?") << "a line of blanks is not empty";
    EXPECT_EQ(opc.current().txp, "   ");
    opc.LerLinAtr(ok);
    EXPECT_EQ(opc.current().var, "V");
    opc.LerLinCnt(tpp, ok);
    EXPECT_EQ(ok, 0);
    EXPECT_EQ(tpp, "");
}

TEST(LineReader, LerParGivesTextOrNumberByTheTargetKind) {
    TempDir dir;
    OpenTdaOpc opc;
    opc.tboPrp(ParameterFile(dir, "v.par",
                             {"' comentario", "Velocidade [VEL]=9600", "Escape [ESC] = &H1B",
                              "Porta [PORTA] = COM1", "Pausa = 5"}));
    const struct {
        Variant target, value;
        std::string ide;
    } reads[] = {
        {Variant(""), Variant("9600"), "VEL"},
        {Variant(), Variant(27.0), "ESC"},
        {Variant(std::int16_t{3}), Variant(0.0), "PORTA"},
        {Variant("x"), Variant(" 5"), ""},
        // At the end of the file: "" or 0 and no name.
        {Variant("x"), Variant(""), ""},
        {Variant(1.5), Variant(0.0), ""},
    };
    for (const auto& r : reads) {
        Variant vp = r.target;
        std::string ide = "old";
        opc.LerPar(vp, ide);
        EXPECT_EQ(vp, r.value) << r.ide;
        EXPECT_EQ(ide, r.ide);
    }
}

}  // namespace
}  // namespace lumbra::test
