// Reading parameter files: the split of one line, logical lines joined from physical ones, the
// special options of a zone header, the stack of open files with their headers, and the command
// line.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "platform/file_handles.h"
#include "platform/msg_box.h"
#include "tests/options/tda_opc.h"
#include "tests/support/recording_msg_sink.h"

namespace lumbra::test {
namespace {

TEST(LineSyntax, ParTppAndParPrepSplitALine) {
    const struct {
        std::string tx, tpp, var, txi, ide, vtx;
        std::int16_t ptx;
    } cases[] = {
        {"", "", "", "", "", "", 0},
        {"   ", "?", "", "", "", "", 0},
        {"'x [A] = 1", "'", "", "", "", "", 0},
        {"##", "##", "", "", "", "", 0},
        {"#DEF - x", "#", "", "", "", "", 0},
        {"$x", "$", "", "", "", "", 0},
        {"$$x", "$$", "", "", "", "", 0},
        // Three characters before "=" make an assignment; ParPrep splits from the third on.
        {"ab=1", "?", "", "ab", "", "1", 4},
        {"abc=1", "=", "", "abc", "", "1", 5},
        {"Porta de comunica\xE7\xE3o [porta\xE7\xE3o] = COM1", "=", "PORTA\xC7\xC3O",
         "Porta de comunica\xE7\xE3o", "porta\xE7\xE3o", " COM1", 34},
        {"Vel [VEL = 1", "=", "", "Vel [VEL", "", " 1", 11},
        // ParTpp looks for the brackets over the whole line, ParPrep before the "=" only.
        {"Valor = [ref] fim", "=", "REF", "Valor", "", " [ref] fim", 8},
    };
    TdaOpc opc;
    for (const auto& c : cases) {
        std::string tpp = "old", var = "old", txi = "old", ide = "old", vtx = "old";
        std::int16_t ptx = -5;
        opc.ParTpp(c.tx, tpp, var);
        opc.ParPrep(c.tx, txi, ide, vtx, ptx);
        EXPECT_EQ(std::vector<std::string>({tpp, var, txi, ide, vtx}),
                  std::vector<std::string>({c.tpp, c.var, c.txi, c.ide, c.vtx}))
            << c.tx;
        EXPECT_EQ(ptx, c.ptx) << c.tx;
    }
}

TEST(LineReader, JoinsContinuationLinesUpToTheLongestALineMayBe) {
    const std::string piece(20000, 'a');
    const struct {
        std::vector<std::string> physical;
        std::string logical;
    } cases[] = {
        {{"Texto [TX] = primeira parte +", "   + segunda parte +", "+terceira", "Fim"},
         "Texto [TX] = primeira parte  segunda parte terceira"},
        // A piece without a leading "+" is taken as read.
        {{"V [V] =a+", "  b  ", "Fim"}, "V [V] =a  b  "},
        {{"V [V] = a +<-", "b", "Fim"}, "V [V] = a b"},
        {{"+V [V] = 1  ", "Fim"}, "V [V] = 1"},
        {{"Gaveta [G] = chr$(27,112)+", "+bin$(&H41)", "Fim"}, "Gaveta [G] = \x1BpA"},
        {{std::string(40000, 'b'), "Fim"}, std::string(32767, 'b')},
        {{piece + "+", "+" + piece + "+", piece, "Fim"}, std::string(32767, 'a')},
        // A logical line still open at the end of the file is dropped.
        {{"V [V] = 1", "Texto [TX] = parte +"}, "V [V] = 1"},
    };
    for (const auto& c : cases) {
        TempDir dir;
        OpenTdaOpc opc;
        opc.tboPrp(ParameterFile(dir, "c.par", c.physical));
        EXPECT_EQ(opc.next(), c.logical);
        EXPECT_EQ(opc.next(), c.physical.back() == "Fim" ? "Fim" : "");
    }
}

TEST(LineReader, SkipsEmptyLinesReadsOnToAssignmentsAndGivesValuesByTheTargetKind) {
    TempDir dir;
    OpenTdaOpc opc;
    opc.tboPrp(ParameterFile(dir, "b.par",
                             {"", "", "   ", "' nota = 1", "#LIG", "ab=1", "Velocidade [VEL]=9600",
                              "Escape [ESC] = &H1B", "Porta [PORTA] = COM1", "Pausa = 5"}));
    std::string tpp;
    std::int16_t ok = 0;
    opc.LerLinCnt(tpp, ok);
    EXPECT_EQ(tpp, "?") << "a line of blanks is not empty";
    EXPECT_EQ(opc.current().txp, "   ");
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
    EXPECT_EQ(opc.current(), ParReg{}) << "the end of the file gives the empty record, ok = 0";
}

TEST(SpecialOptions, OpcEspUsaTakesTheItemsOutAndDecodingStaysOnOnlyForCnvChrOne) {
    const struct {
        std::string txi, txiAfter;
        std::int16_t usa;
        std::string espLst, vtx;
    } cases[] = {
        {"  Porta s\xE9rie [cnvchr=0]", "Porta s\xE9rie", 1, "[cnvchr=0]", " chr$(27)p"},
        {"[CnvChr=2]", "", 1, "[CnvChr=2]", " chr$(27)p"},
        {"[CnvChr=99999]", "", 1, "[CnvChr=99999]", " chr$(27)p"},
        {"[CnvChr=1]", "", 1, "[CnvChr=1]", " \x1Bp"},
        {"Info [X=1]", "Info", 1, "[X=1]", " \x1Bp"},
        {"x [", "x [", 0, "", " \x1Bp"},
    };
    for (const auto& c : cases) {
        TempDir dir;
        OpenTdaOpc opc;
        opc.tboPrp(ParameterFile(dir, "g.par", {"Abrir [A] = chr$(27)p"}));
        std::string txi = c.txi;
        std::int16_t usa = -1;
        opc.OpcEspUsa(txi, usa);
        EXPECT_EQ(txi, c.txiAfter) << c.txi;
        EXPECT_EQ(usa, c.usa) << c.txi;
        EXPECT_EQ(opc.specials(), c.espLst) << c.txi;
        Variant vp = "";
        opc.LerPar(vp);
        EXPECT_EQ(vp, Variant(c.vtx)) << c.txi;
    }
}

TEST(FileStack, TheHeaderIsConsumedAndTheTypeTakenFromTheSecondLine) {
    const struct {
        std::string bytes, ficTip, sixth;
    } cases[] = {
        {Lines({"'Nome : t", "'Tipo:   cfg  ", "", "", "", "Sexta"}), "CFG", "Sexta"},
        {Lines({"'Nome : t", "  sem dois pontos  ", "", "", "", "Sexta"}), "SEM DOIS PONTOS",
         "Sexta"},
        // A short header: the missing lines read as "" and the file is at its end.
        {Lines({"'Nome : t", "'Tipo : PAR", "'Data : 1"}), "PAR", ""},
    };
    for (const auto& c : cases) {
        TempDir dir;
        dir.write("t.par", c.bytes);
        OpenTdaOpc opc;
        opc.tboPrp(dir.file("t.par"), "LER");
        EXPECT_EQ(opc.ficTip(), c.ficTip);
        EXPECT_EQ(opc.next(), c.sixth) << c.ficTip;
    }
}

TEST(FileStack, NestedFilesAreReadBackInOrderAndClosedByKvFimOrDestruction) {
    TempDir dir;
    OpenTdaOpc opc;
    opc.tboPrp(ParameterFile(dir, "a.par", {"A1", "A2"}));
    const std::int16_t first = opc.FicAtu();
    EXPECT_EQ(opc.next(), "A1");
    opc.tboPrp(ParameterFile(dir, "b.par", {"B1"}));
    EXPECT_EQ(opc.next(), "B1");
    opc.tboFim();
    EXPECT_EQ(opc.FicAtu(), first);
    EXPECT_EQ(opc.next(), "A2");
    opc.tboFim();
    EXPECT_EQ(opc.FicAtu(), -1);
    EXPECT_FALSE(platform::FileIsOpen(first));
}

TEST(FileStack, AFileThatCannotBeOpenedEndsTheProgramAfterTheMessage) {
    TempDir dir;
    const struct {
        bool records;
        std::string path, error, inf;
    } cases[] = {
        {false, dir.file("falta.par"), "Erro : 53   File not found", "(CFG)"},
        {false, dir.file("pasta/falta.par"), "Erro : 76   Path not found", "(CFG)"},
        {true, dir.file("falta.par"), "Erro : 53   File not found", "(LER)"},
    };
    for (const auto& c : cases) {
        RecordingMsgSink sink;
        OpenTdaOpc opc;
        EXPECT_THROW(c.records ? opc.RegPrp(c.path) : opc.tboPrp(c.path, "CFG"),
                     platform::ProgramEnded);
        ASSERT_EQ(sink.boxes().size(), 1U);
        EXPECT_EQ(sink.boxes()[0].title, "Erro a abrir ficheiro");
        EXPECT_THAT(sink.boxes()[0].text, ::testing::HasSubstr(c.error));
        EXPECT_THAT(sink.boxes()[0].text,
                    ::testing::HasSubstr("Ficheiro :" + c.path + "   " + c.inf));
        EXPECT_EQ(sink.endings().size(), 1u);
    }
}

TEST(CommandLine, LcConFindsTheWordAtAPositionOrAfterASwitch) {
    const struct {
        std::string cmd;
        Variant arg, target;
        std::int16_t ok;
        Variant value;
    } cases[] = {
        {"-fp C:\\A.PAR", "-FP", "", 1, "C:\\A.PAR"},
        {"-FP", "-FP", "", 0, ""},
        // Words are split at blanks only.
        {" a\tb  c", 2.0, "", 1, "c"},
        // A position is rounded half to even.
        {"A B C", 2.5, "", 1, "B"},
        {"X -FP Y -FP Z", "-FP", "", 1, "Y"},
        {"-FP 12", "-FP", 1.0, 1, 12.0},
        // Compared without regard to case, accents included, but not trimmed.
        {"op\xE7\xE3o 1", "OP\xC7\xC3O", "", 1, "1"},
        {"-FP x", " -FP", "", 0, ""},
    };
    for (const auto& c : cases) {
        OpenTdaOpc opc;
        opc.LcPrpArg(c.cmd);
        Variant vl = c.target;
        std::int16_t ok = -1;
        opc.LcCon(c.arg, vl, ok);
        EXPECT_EQ(ok, c.ok) << c.cmd;
        EXPECT_EQ(vl, c.value) << c.cmd;
    }
}

TEST(CommandLine, LcIniChoosesTheNamedFileOrTheDefaultInTheProgramFolder) {
    TempDir program;
    TempDir data;
    program.write("Lumbra.par", "");
    data.write("outro.par", "");
    const struct {
        std::vector<std::string> words;
        std::string nfp, LcFpa;
    } cases[] = {
        {{}, "Lumbra.par", program.file("Lumbra.par")},
        {{"-fp", data.file("outro.par")}, "Lumbra.par", data.file("outro.par")},
        // A named file that is missing is not replaced by the default.
        {{"-FP", data.file("falta.par")}, "Lumbra.par", ""},
        {{}, "Falta.par", ""},
    };
    for (const auto& c : cases) {
        const ScopedProgram running(c.words, program.path());
        OpenTdaOpc opc;
        opc.setLcFpa("old");
        opc.LcIni(c.nfp);
        EXPECT_EQ(opc.LcFpa(), c.LcFpa) << c.nfp << " after " << c.words.size() << " words";
        EXPECT_EQ(opc.LcArgC(), static_cast<std::int16_t>(c.words.size()));
    }
}

}  // namespace
}  // namespace lumbra::test
