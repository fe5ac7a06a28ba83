// Reading parameter files: the split of one line, logical lines joined from physical ones, the
// header of a file and a file that cannot be opened, the command line; then options: the three
// sources of a key, references between options, the option list kept by OpcAct and the queries
// built on them.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <vector>

#include "platform/file_handles.h"
#include "platform/msg_box.h"
#include "tests/options/tda_opc.h"
#include "tests/support/recording_msg_sink.h"
#include "util/lists/keyed_list.h"

namespace lumbra::test {
namespace {

TEST(LineSyntax, ParTppAndParPrepSplitALine) {
    const struct {
        std::string tx, tpp, var, txi, ide, vtx;
        std::int16_t ptx;
    } cases[] = {
        {"", "", "", "", "", "", 0},
        {"'x [A] = 1", "'", "", "", "", "", 0},
        // Three characters before "=" make an assignment; ParPrep splits from the third on.
        {"ab=1", "?", "", "ab", "", "1", 4},
        {"abc=1", "=", "", "abc", "", "1", 5},
        {"Porta de comunica\xE7\xE3o [porta\xE7\xE3o] = COM1", "=", "PORTA\xC7\xC3O",
         "Porta de comunica\xE7\xE3o", "porta\xE7\xE3o", " COM1", 34},
        // ParTpp looks for the brackets over the whole line, ParPrep before the "=" only.
        {"Valor = [ref] fim", "=", "REF", "Valor", "", " [ref] fim", 8},
        // A line is split whole however long; only a position past 16 bits cannot be given.
        {std::string(40000, 'a') + "[x]=1", "=", "X", std::string(40000, 'a'), "x", "1", 0},
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

TEST(LineReader, JoinsContinuationLinesWhateverTheirLength) {
    const std::string piece(40000, 'a');
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
        {{piece, "Fim"}, piece},
        {{piece + "+", "+b+", " c", "Fim"}, piece + "b c"},
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

TEST(FileStack, TheHeaderIsConsumedAndTheTypeTakenFromTheSecondLine) {
    const struct {
        std::string bytes, ficTip, sixth;
    } cases[] = {
        {Lines({"'Nome : t", "'Tipo:   cfg  ", "", "", "", "Sexta"}), "CFG", "Sexta"},
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

TEST(FileStack, AFileThatCannotBeOpenedEndsTheProgramAfterTheMessage) {
    TempDir dir;
    const struct {
        bool records;
        std::string path;
        std::int16_t err;
        std::string inf;
    } cases[] = {
        {false, dir.file("falta.par"), 53, "(CFG)"},
        {false, dir.file("pasta/falta.par"), 76, "(CFG)"},
        {true, dir.file("falta.par"), 53, "(LER)"},
    };
    for (const auto& c : cases) {
        RecordingMsgSink sink;
        OpenTdaOpc opc;
        EXPECT_THROW(c.records ? opc.RegPrp(c.path) : opc.tboPrp(c.path, "CFG"),
                     platform::ProgramEnded);
        ASSERT_EQ(sink.boxes().size(), 1U);
        EXPECT_EQ(sink.boxes()[0].title, "Erro a abrir ficheiro");
        EXPECT_THAT(sink.boxes()[0].text,
                    ::testing::HasSubstr("Erro : " + std::to_string(c.err) + "   " +
                                         platform::ErrDescription(c.err)));
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
        {"X -FP Y -FP Z", "-FP", "", 1, "Y"},
        {"-FP 12", "-FP", 1.0, 1, 12.0},
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

// A DEF zone whose options refer to one another in every way a technician may write, then a zone
// of other variables, read with the command line -fp C:\A.PAR - traço -N 12 and
// the program in /opt/lumbra.
class Options : public ::testing::Test {
  protected:
    void SetUp() override {
        std::vector<std::string> body;
        body.insert(body.end(), {"#DEF Geral - Op", "Base [DirBas]=C:\\LUMBRA",
                                 "Tmp [DirTmp]=[DirBas]\\TMP", "Num [Num]=12", "Ref [A]=[B]\\x",
                                 "Ref [B]=[C]\\y", "Ref [C]=z", "Ref [Self]=[Self]",
                                 "Ref [Prg]=[APP:PATH]/cfg", "Til [LC:~]=til", "Fecho [Fec]=]"});
        // N1 refers to N2, and so on; only N30 holds a plain value.
        for (int i = 1; i < 30; ++i)
            body.push_back("Elo [N" + std::to_string(i) + "]=[N" + std::to_string(i + 1) + "]");
        body.insert(body.end(), {
                                    "Elo [N30]=fim",
                                    "##",
                                    "#X",
                                    "Cam [Cam]=[DirBas]\\x",
                                    "Dbg [DbgModo]= modo ",
                                    "Dbg [DBG1]=1",
                                    "Dbg [DbgOutro]=nao",
                                    "##",
                                });
        opc_.ZonIniLer(ParameterFile(dir_, "o.par", body));
        opc_.LcPrpArg("-fp C:\\A.PAR - tra\xE7o -N 12");
    }
    void TearDown() override { opc_.ZonFim(); }

    TempDir dir_;
    ScopedProgram program_{{}, "/opt/lumbra"};
    OpenTdaOpc opc_;
};

TEST_F(Options, OpcConAnswersFromTheProgramTheCommandLineOrTheOptionList) {
    const struct {
        std::string chv;
        Variant target, value;
    } cases[] = {
        {"DirTmp", "", "[DirBas]\\TMP"},
        {"Num", 0.0, 12.0},
        {"Nada", "", ""},
        {"APP:PATH", "", "/opt/lumbra"},
        {"LC:FP", "", "C:\\A.PAR"},
        {"LC:", "", "tra\xE7o"},
        {"LC:N", 0.0, 12.0},
    };
    for (const auto& c : cases) {
        Variant vop = c.target;
        opc_.OpcCon(c.chv, vop);
        EXPECT_EQ(vop, c.value) << "[" << c.chv << "]";
    }
}

TEST_F(Options, ReferencesAreReplacedUpToTwentyOnePasses) {
    const struct {
        std::string chv, path;
    } paths[] = {
        {" dirtmp ", "C:\\LUMBRA\\TMP"},
        {"A", "z\\y\\x"},
        {"Self", "[Self]"},
        {"Prg", "/opt/lumbra/cfg"},
        // One reference replaced first, then 21 more passes.
        {"N1", "[N24]"},
    };
    for (const auto& c : paths) {
        std::string path = "velho";
        opc_.OpcPath(c.chv, path);
        EXPECT_EQ(path, c.path) << "OpcPath " << c.chv;
    }
    const struct {
        std::string txo, result;
    } texts[] = {
        {"[N1]", "[N22]"},
        {"x[Nada]y[DirBas]", "xyC:\\LUMBRA"},
        {"[Fec][DirBas]", "]C:\\LUMBRA"},
        {"[LC:~]-[app:path]", "til-/opt/lumbra"},
    };
    for (const auto& c : texts) {
        std::string txo = c.txo;
        opc_.OpcSbr(txo);
        EXPECT_EQ(txo, c.result) << "OpcSbr " << c.txo;
        Variant sai = 0.0;
        opc_.OpcSbr(c.txo, sai);
        EXPECT_EQ(sai, Variant(c.result)) << "OpcSbr into sai " << c.txo;
    }
}

TEST_F(Options, OpcActSetsTextKeepsPositionsAndMatchesTheKeyedList) {
    std::vector<std::string> expected = opc_.options();
    std::int16_t ok = 0;
    const struct {
        std::string chv;
        Variant vop;
        std::string name, text;
    } cases[] = {
        {"dirbas", "D:\\", "DIRBAS", "D:\\"},
        {" novo ", 1.5, "NOVO", "1.5"},
        {"Novo", Variant(), "NOVO", ""},
        {"", "vazio", "", "vazio"},
        {std::string("a\0b", 3), "recusado", std::string("A\0B", 3), "recusado"},
    };
    for (const auto& c : cases) {
        opc_.OpcAct(c.chv, c.vop);
        LstAct(expected, c.name, c.text, ok);
        EXPECT_EQ(opc_.options(), expected) << c.name;
    }
    std::string value;
    std::int16_t pos = 0;
    LstCon(opc_.options(), "DIRBAS", value, pos);
    EXPECT_EQ(value, "D:\\");
    EXPECT_EQ(pos, 1) << "an existing key keeps its position";
}

TEST(OptionList, TheThirtyTwoThousandAndFirstNameIsRefused) {
    OpenTdaOpc opc;
    opc.OpcIni("A");
    for (int i = 1; i <= 32001; ++i)
        opc.OpcAct("K" + std::to_string(i), "v");
    EXPECT_EQ(opc.options().size(), 32002U);
    EXPECT_EQ(opc.option("K32000"), "v");
    EXPECT_EQ(opc.option("K32001"), "");
    opc.OpcAct("K1", "w");
    EXPECT_EQ(opc.option("K1"), "w") << "a full list still takes new values for its names";
}

TEST_F(Options, MemPathAndOpcDbgReadTheVariablesOfTheCurrentZone) {
    std::string ide, tip, path = "velho", tpp = "velho";
    std::int16_t cnt = 0, exi = -1;
    opc_.ZonSeg(ide, tip, cnt);
    opc_.MemPath(" cam ", path, exi, tpp);
    EXPECT_EQ(path + std::to_string(exi) + tpp, "C:\\LUMBRA\\x1=");
    opc_.MemPath("Falta", path, exi, tpp);
    EXPECT_EQ(path + std::to_string(exi) + tpp, "0");

    // On when the variable DBG + name holds the name.
    const struct {
        Variant chv, vop, sn, result;
    } cases[] = {
        {"modo ", "", std::int16_t{1}, "S"},
        {"Modo", 0.0, 1.0, std::int16_t{1}},
        {"Modo", "", 0.0, "MODO"},
        {std::int16_t{1}, "", 1.0, "S"},
        {"Outro", "", 1.0, "N"},
        {"Outro", Variant(), 1.0, std::int16_t{0}},
    };
    for (const auto& c : cases) {
        Variant vop = c.vop;
        opc_.OpcDbg(c.chv, vop, c.sn);
        EXPECT_EQ(vop, c.result) << (c.chv.isText() ? c.chv.text() : "number");
    }
}

}  // namespace
}  // namespace lumbra::test
