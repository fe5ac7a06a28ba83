// Reading parameter files: the split of one line, logical lines joined from physical ones, the
// special options of a zone header, the stack of open files, the command line; then options: the
// three sources of a key, references between options, the option list kept by OpcAct, the queries
// built on them, and the option table walked by name prefix.

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

// A DEF zone whose options refer to one another in every way a technician may write, then a zone
// of other variables and an OPC zone, read with the command line -fp C:\A.PAR - traço -N 12 and
// the program in /opt/lumbra.
class Options : public ::testing::Test {
  protected:
    void SetUp() override {
        std::vector<std::string> body;
        body.insert(body.end(),
                    {"#DEF Geral - Op", "Base [DirBas]=C:\\LUMBRA", "Tmp [DirTmp]=[DirBas]\\TMP",
                     "Blanks [Esp]=  a b  ", "Num [Num]=12", "Txt [Txt]=abc", "Hex [Hex]=&H10",
                     "Ref [A]=[B]\\x", "Ref [B]=[C]\\y", "Ref [C]=z", "Ref [Self]=[Self]",
                     "Ref [Fal]=[Nada]x", "Ref [Min]=[ dirbas ]\\m", "Ref [Prg]=[APP:PATH]/cfg",
                     "Ref [Lin]=[LC:FP]", "Til [LC:~]=til", "Fecho [Fec]=]"});
        // N1 refers to N2, and so on; only N30 holds a plain value.
        for (int i = 1; i < 30; ++i)
            body.push_back("Elo [N" + std::to_string(i) + "]=[N" + std::to_string(i + 1) + "]");
        body.insert(body.end(), {"Elo [N30]=fim", "##", "#X", "Cam [Cam]=[DirBas]\\x",
                                 "Dbg [DbgModo]= modo ", "Dbg [DBG1]=1", "Dbg [DbgOutro]=nao", "##",
                                 "#OPC", "Tmp [F:DirTmp]=[DirBas]\\TMP", "Base [DirBase]=[DirBas]",
                                 "Editor [F:Editor]=[DirBas]\\notepad.exe", "Num [N]=1", "##"});
        opc_.ZonIniLer(ParameterFile(dir_, "o.par", body));
        opc_.LcPrpArg("-fp C:\\A.PAR - tra\xE7o -N 12");
    }
    void TearDown() override { opc_.ZonFim(); }

    // Reads the next zone.
    void Next() {
        std::string ide, tip;
        std::int16_t cnt = 0;
        opc_.ZonSeg(ide, tip, cnt);
    }

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
        {"Esp", "", "  a b  "},
        {"Num", 0.0, 12.0},
        {"Hex", 0.0, 16.0},
        {"Nada", "", ""},
        {"APP:PATH", "", "/opt/lumbra"},
        {"LC:FP", "", "C:\\A.PAR"},
        {"LC:", "", "tra\xE7o"},
        {"LC:N", 0.0, 12.0},
        // "~" sorts after "z": not a command-line key.
        {"LC:~", "", "til"},
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
        {"Fal", "x"},
        {"Prg", "/opt/lumbra/cfg"},
        {"Lin", "C:\\A.PAR"},
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
        {"[]", "[]"},
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

TEST(OptionList, OpcIniGivesAKeyedListOnlyWithA) {
    for (const std::string mo : {"A", "a"}) {
        OpenTdaOpc opc;
        opc.OpcAct("antes", "x");
        opc.OpcIni(mo);
        EXPECT_EQ(opc.options().size(), mo == "A" ? 2u : 1u);
        opc.OpcAct("K", 1.0);
        EXPECT_EQ(opc.option("K"), mo == "A" ? "1" : "") << mo;
    }
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

TEST(ZoneValues, OpcArrGivesTheValuesInOrderOfFirstAppearance) {
    TempDir dir;
    OpenTdaOpc opc;
    opc.ZonIniLer(ParameterFile(
        dir, "o.par",
        {"#LIG", "Um [A]=1", "Dois [B]=2", "Outra vez [A]=3", "Tr\xEAs [C]=4", "##"}));
    std::vector<std::string> tx{"velho"};
    opc.OpcArr(4, tx);
    EXPECT_EQ(tx, (std::vector<std::string>{"", "3", "2", "4", ""}));
    opc.OpcArr(-3, tx);
    EXPECT_EQ(tx, std::vector<std::string>{""});
    EXPECT_EQ(opc.options(), std::vector<std::string>{""}) << "OpcArr leaves the option list";
    opc.ZonFim();
}

TEST_F(Options, MemPathAndOpcDbgReadTheVariablesOfTheCurrentZone) {
    Next();
    std::string path = "velho", tpp = "velho";
    std::int16_t exi = -1;
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

struct Entry {
    std::string txi, vop, tpo;
    friend bool operator==(const Entry&, const Entry&) = default;
};

// Every entry OpcTabCon hands out, up to the first with an empty name.
std::vector<Entry> Walk(TdaOpc& opc) {
    std::vector<Entry> entries;
    for (;;) {
        Entry e{"?", "?", "?"};
        opc.OpcTabCon(e.txi, e.vop, e.tpo);
        if (e.txi.empty()) {
            EXPECT_EQ(e, (Entry{"", "", ""}));
            return entries;
        }
        entries.push_back(e);
    }
}

TEST_F(Options, OpcTabPrpSelectsByNamePrefixAndOpcTabConWalksTheSelection) {
    Next();
    Next();
    ASSERT_EQ(opc_.optionTable().size(), 5U);
    EXPECT_TRUE(Walk(opc_).empty()) << "nothing is selected before OpcTabPrp";
    const Entry tmp{"Tmp", "C:\\LUMBRA\\TMP", "DIRTMP"}, base{"Base", "[DirBas]", "DIRBASE"},
        editor{"Editor", "C:\\LUMBRA\\notepad.exe", "EDITOR"}, number{"Num", "1", "N"};
    const struct {
        std::string tpv;
        std::vector<Entry> entries;
    } cases[] = {
        {"", {}},
        {"*", {tmp, base, editor, number}},
        {"DIR", {tmp, base}},
        {"EDI,DIRT", {tmp, editor}},
        {"DIR, EDI", {tmp, base}},
        {"F", {}},
        {"*,X", {}},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(opc_.OpcTabPrp(c.tpv), static_cast<std::int16_t>(c.entries.size())) << c.tpv;
        EXPECT_EQ(Walk(opc_), c.entries) << c.tpv;
        EXPECT_TRUE(Walk(opc_).empty()) << "a finished walk stays finished";
    }
}

}  // namespace
}  // namespace lumbra::test
