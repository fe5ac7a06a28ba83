// Reading parameter files: lines, logical lines, the header, the command line, options, and the
// zone walk with the memory table and option-table files.

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <tuple>
#include <vector>

#include "platform/msg_box.h"
#include "tests/options/tda_opc.h"
#include "tests/support/recording_msg_sink.h"
#include "util/lists/keyed_list.h"
#include "util/text/numeric.h"

namespace lumbra::test {
namespace {

TEST(LineSyntax, ParTppAndParPrepSplitALine) {
    const std::string a(32762, 'a');
    // line, {ParTpp's tpp and var, ParPrep's txi, ide and vtx}, ParPrep's ptx
    const std::tuple<std::string, Words, std::int16_t> cases[] = {
        {"", {"", "", "", "", ""}, 0},
        {"'x [A] = 1", {"'", "", "", "", ""}, 0},
        // Three characters before "=" make an assignment; ParPrep splits from the third on.
        {"ab=1", {"?", "", "ab", "", "1"}, 4},
        {"abc=1", {"=", "", "abc", "", "1"}, 5},
        {"Porta de comunica\xE7\xE3o [porta\xE7\xE3o] = COM1",
         {"=", "PORTA\xC7\xC3O", "Porta de comunica\xE7\xE3o", "porta\xE7\xE3o", " COM1"},
         34},
        // ParTpp looks for the brackets over the whole line, ParPrep before the "=" only.
        {"Valor = [ref] fim", {"=", "REF", "Valor", "", " [ref] fim"}, 8},
        // A line is split whole however long; only a position past 16 bits cannot be given.
        {a + "[x]=1", {"=", "X", a, "x", "1"}, 32767},
        {a + "a[x]=1", {"=", "X", a + "a", "x", "1"}, 0}};
    TdaOpc opc;
    for (const auto& [tx, parts, pos] : cases) {
        Words got(5, "old");
        std::int16_t ptx = -5;
        opc.ParTpp(tx, got[0], got[1]);
        opc.ParPrep(tx, got[2], got[3], got[4], ptx);
        EXPECT_EQ(std::make_tuple(got, ptx), std::make_tuple(parts, pos)) << tx.substr(0, 30);
    }
}

TEST(LineReader, JoinsContinuationLinesWhateverTheirLength) {
    const std::string piece(40000, 'a');
    const std::tuple<Words, std::string> cases[] = {
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
        {{"V [V] = 1", "Texto [TX] = parte +"}, "V [V] = 1"}};
    for (const auto& [physical, logical] : cases) {
        TempDir dir;
        OpenTdaOpc opc;
        opc.tboPrp(ParameterFile(dir, "c.par", physical));
        EXPECT_EQ(opc.next(), logical);
        EXPECT_EQ(opc.next(), physical.back() == "Fim" ? "Fim" : "");
    }
}

TEST(FileStack, TheHeaderIsConsumedAndTheTypeTakenFromTheSecondLine) {
    // A short header: the missing lines read as "" and the file is at its end.
    const struct {
        std::string bytes, ficTip, sixth;
    } cases[] = {{Lines({"'Nome : t", "'Tipo:   cfg  ", "", "", "", "Sexta"}), "CFG", "Sexta"},
                 {Lines({"'Nome : t", "'Tipo : PAR", "'Data : 1"}), "PAR", ""}};
    for (const auto& c : cases) {
        TempDir dir;
        dir.write("t.par", c.bytes);
        OpenTdaOpc opc;
        opc.tboPrp(dir.file("t.par"), "LER");
        EXPECT_EQ(opc.ficTip(), c.ficTip);
        EXPECT_EQ(opc.next(), c.sixth) << c.ficTip;
    }
}

// The creation stamp: the clock, then its seconds since midnight as the host's single shows them.
TEST(FileStack, DbgInfStampsTheCreationTime) {
    const std::string s = TdaOpc().DbgInf();
    const double clock =
        std::stoi(s) * 3600.0 + std::stoi(s.substr(3)) * 60 + std::stoi(s.substr(6));
    const double seconds = NumRead(s.substr(8));
    EXPECT_TRUE(s.substr(8, 1) == " " && seconds >= clock - 0.01 && seconds < clock + 1) << s;
}

// Both readers end the program through the box (its text is the file procedures' concern).
TEST(FileStack, AFileThatCannotBeOpenedEndsTheProgramAfterTheMessage) {
    TempDir dir;
    for (const bool records : {false, true}) {
        RecordingMsgSink sink;
        OpenTdaOpc opc;
        EXPECT_THROW(records ? opc.RegPrp(dir.file("f")) : opc.tboPrp(dir.file("f"), "CFG"),
                     platform::ProgramEnded);
        ASSERT_EQ(sink.boxes().size(), 1u);
        EXPECT_TRUE(sink.boxes()[0].text.ends_with(records ? "f   (LER)" : "f   (CFG)"));
    }
}

TEST(CommandLine, LcIniChoosesTheNamedFileOrTheDefaultInTheProgramFolder) {
    TempDir program, data;
    program.write("Lumbra.par", "");
    data.write("outro.par", "");
    // A named file that is missing is not replaced by the default.
    const std::tuple<Words, std::string, std::string> cases[] = {
        {{}, "Lumbra.par", program.file("Lumbra.par")},
        {{"-fp", data.file("outro.par")}, "Lumbra.par", data.file("outro.par")},
        {{"-FP", data.file("falta.par")}, "Lumbra.par", ""},
        {{}, "Falta.par", ""}};
    for (const auto& [words, nfp, fpa] : cases) {
        const ScopedProgram running(words, program.path());
        OpenTdaOpc opc;
        opc.setLcFpa("old");
        opc.LcIni(nfp);
        EXPECT_EQ(opc.LcFpa(), fpa) << nfp << " after " << words.size() << " words";
        EXPECT_EQ(opc.LcArgC(), static_cast<std::int16_t>(words.size()));
    }
}

// A DEF zone whose options refer to one another in every way, then a zone of other variables.
class Options : public ::testing::Test {
  protected:
    void SetUp() override {
        Words body = Split(
            "#DEF Geral - Op\nBase [DirBas]=C:\\LUMBRA\nTmp [DirTmp]=[DirBas]\\TMP\nNum [Num]=12\n"
            "Ref [A]=[B]\\x\nRef [B]=[C]\\y\nRef [C]=z\nRef [Self]=[Self]\n"
            "Ref [Prg]=[APP:PATH]/cfg\nTil [LC:~]=til\nFecho [Fec]=]");
        // N1 refers to N2, and so on; only N30 holds a plain value.
        for (int i = 1; i < 30; ++i)
            body.push_back("Elo [N" + std::to_string(i) + "]=[N" + std::to_string(i + 1) + "]");
        const Words rest = Split(
            "Elo [N30]=fim\n##\n#X\nCam [Cam]=[DirBas]\\x\n"
            "Dbg [DbgModo]= modo \nDbg [DBG1]=1\nDbg [DbgOutro]=nao\n##");
        body.insert(body.end(), rest.begin(), rest.end());
        opc_.ZonIniLer(ParameterFile(dir_, "o.par", body));
        opc_.LcPrpArg("-fp C:\\A.PAR - tra\xE7o -N 12 -fp Y -Z");
    }
    void TearDown() override { opc_.ZonFim(); }

    TempDir dir_;
    ScopedProgram program_{{}, "/opt/lumbra"};
    OpenTdaOpc opc_;
};

// A switch names the word after its first occurrence; one with nothing after it names nothing.
TEST_F(Options, OpcConAnswersFromTheProgramTheCommandLineOrTheOptionList) {
    const std::tuple<std::string, Variant, Variant> cases[] = {{"DirTmp", "", "[DirBas]\\TMP"},
                                                               {"Num", 0.0, 12.0},
                                                               {"Nada", "", ""},
                                                               {"APP:PATH", "", "/opt/lumbra"},
                                                               {"LC:FP", "", "C:\\A.PAR"},
                                                               {"LC:", "", "tra\xE7o"},
                                                               {"LC:N", 0.0, 12.0},
                                                               {"LC:Z", "", ""},
                                                               {"LC:Y", "", ""}};
    for (const auto& [chv, target, value] : cases) {
        Variant vop = target;
        opc_.OpcCon(chv, vop);
        EXPECT_EQ(vop, value) << "[" << chv << "]";
    }
    Variant word = 0.0;
    std::int16_t ok = -1;
    opc_.LcCon(std::int16_t{6}, word, ok);
    EXPECT_EQ(std::make_tuple(word, ok), std::make_tuple(Variant(12.0), 1)) << "by position";
}

TEST_F(Options, ReferencesAreReplacedUpToTwentyOnePasses) {
    // OpcPath of a key, or OpcSbr of a text. OpcPath replaces one reference first, then 21 passes.
    const std::tuple<bool, std::string, std::string> cases[] = {
        {true, " dirtmp ", "C:\\LUMBRA\\TMP"},
        {true, "A", "z\\y\\x"},
        {true, "Self", "[Self]"},
        {true, "Prg", "/opt/lumbra/cfg"},
        {true, "N1", "[N24]"},
        {false, "[N1]", "[N22]"},
        {false, "x[Nada]y[DirBas]", "xyC:\\LUMBRA"},
        {false, "[Fec][DirBas]", "]C:\\LUMBRA"},
        {false, "[LC:~]-[app:path]", "til-/opt/lumbra"}};
    for (const auto& [path, tx, result] : cases) {
        std::string got = tx;
        Variant sai = 0.0;
        path ? opc_.OpcPath(tx, got) : opc_.OpcSbr(got);
        opc_.OpcSbr(path ? "" : tx, sai);
        EXPECT_EQ(std::make_tuple(got, sai), std::make_tuple(result, Variant(path ? "" : result)));
    }
}

TEST_F(Options, OpcActSetsTextKeepsPositionsAndMatchesTheKeyedList) {
    Words expected = opc_.options();
    std::int16_t ok = 0;
    const std::tuple<std::string, Variant, std::string, std::string> cases[] = {
        {"dirbas", "D:\\", "DIRBAS", "D:\\"},
        {" novo ", 1.5, "NOVO", "1.5"},
        {"Novo", Variant(), "NOVO", ""},
        {"", "vazio", "", "vazio"},
        {std::string("a\0b", 3), "recusado", std::string("A\0B", 3), "recusado"}};
    for (const auto& [chv, vop, name, text] : cases) {
        opc_.OpcAct(chv, vop);
        LstAct(expected, name, text, ok);
        EXPECT_EQ(opc_.options(), expected) << name;
    }
    std::string value;
    std::int16_t pos = 0;
    LstCon(opc_.options(), "DIRBAS", value, pos);
    EXPECT_EQ(value + std::to_string(pos), "D:\\1") << "an existing key keeps its position";
}

TEST(OptionList, TheThirtyTwoThousandAndFirstNameIsRefused) {
    OpenTdaOpc opc;
    opc.OpcIni("A");
    for (int i = 1; i <= 32001; ++i)
        opc.OpcAct("K" + std::to_string(i), "v");
    EXPECT_EQ(opc.options().size(), 32002U);
    EXPECT_EQ(opc.option("K32000") + "|" + opc.option("K32001"), "v|");
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
    Words fic;
    opc_.ZonArr("FIC", 9, fic);
    EXPECT_EQ(fic, (Words{"", "C:\\LUMBRA\\x", " modo ", "1", "nao"}));
    // On when the variable DBG + name holds the name: name, target, sn, result
    const struct {
        Variant chv, vop, sn, result;
    } cases[] = {{"modo ", "", std::int16_t{1}, "S"},
                 {"Modo", 0.0, 1.0, std::int16_t{1}},
                 {"Modo", "", 0.0, "MODO"},
                 {std::int16_t{1}, "", 1.0, "S"},
                 {"Outro", "", 1.0, "N"},
                 {"Outro", Variant(), 1.0, std::int16_t{0}}};
    for (const auto& c : cases) {
        Variant vop = c.vop;
        opc_.OpcDbg(c.chv, vop, c.sn);
        EXPECT_EQ(vop, c.result) << (c.chv.isText() ? c.chv.text() : "number");
    }
}

struct Zone {
    std::string ide, tip;
    std::int16_t cnt = 0;
    std::string txi;
    friend bool operator==(const Zone&, const Zone&) = default;
};

Zone NextZone(TdaOpc& opc) {
    Zone z{"?", "?", -1, "?"};
    opc.ZonSeg(z.ide, z.tip, z.cnt, z.txi);
    return z;
}

const Zone kEnd{"", "IDE", 0, ""};

class Zones : public ::testing::Test {
  protected:
    void Open(const Words& body) { opc.ZonIni(ParameterFile(dir, "z.par", body)); }
    TempDir dir;
    OpenTdaOpc opc;
};

TEST_F(Zones, TheExampleFileGivesItsZonesCallByCall) {
    const ScopedProgram program({"-FP", "x.par", "-COM1", "/dev/ttyUSB0"});
    Open({"#DEF Geral - Geral", "Modo de depura\xE7\xE3o [DbgModo]=0",
          "Direct\xF3rio base [DirBas]=C:\\LUMBRA", "##", "' texto entre zonas",
          "#LIG Liga\xE7\xE3o", "Porta de liga\xE7\xE3o [Porta]=1", "' coment\xE1rio",
          "Velocidade [Vel]=9600", "##"});
    opc.LcPrpArg("antes");

    EXPECT_EQ(NextZone(opc), (Zone{"DEF", "IDE", 2, "Geral"}));
    Words expected;
    std::int16_t ok = 0;
    LstIni(expected);
    LstAct(expected, "DBGMODO", "0", ok);
    LstAct(expected, "DIRBAS", "C:\\LUMBRA", ok);
    EXPECT_EQ(opc.options(), expected);
    EXPECT_EQ(opc.LcArgC(), 4) << "the DEF zone re-reads the command line";

    EXPECT_EQ(NextZone(opc), (Zone{"LIG", "IDE", 2, ""}));
    TdaOpc::ZonMul mul;
    opc.ZonArr("MUL", 9, mul);
    EXPECT_EQ(mul,
              (TdaOpc::ZonMul{
                  {}, {"Porta de liga\xE7\xE3o", "PORTA", "1"}, {"Velocidade", "VEL", "9600"}}));
    Words values;
    opc.OpcArr(3, values);
    EXPECT_EQ(values, (Words{"", "1", "9600", ""})) << "a count past the zone leaves slots empty";
    Variant gone = "";
    std::int16_t exi = -1;
    opc.MemCon("DIRBAS", gone, exi);
    EXPECT_EQ(exi, 0) << "the names of the previous zone are forgotten";
    EXPECT_EQ(opc.options(), expected) << "an IDE zone leaves the option list alone";

    EXPECT_EQ(NextZone(opc), kEnd);
    EXPECT_EQ(NextZone(opc), kEnd) << "an exhausted walk keeps answering the end";
    opc.ZonFim();
    EXPECT_EQ(opc.fileCount(), 0);
}

TEST_F(Zones, HeaderLinesGiveIdentifierKindAndInformationText) {
    // [CnvChr=0] keeps the zone's values as written; any other item leaves them decoded. A blank
    // ends the head, so ":TX" after it is description, not the kind.
    const std::tuple<std::string, Zone, std::string, std::string> cases[] = {
        {"#ajuda:tx Texto - Ajuda [CnvChr=0]", {"AJUDA", "TX", 1, "Ajuda"}, "[CnvChr=0]", ""},
        {"#LIG - Porta [cnvchr=0]", {"LIG", "IDE", 1, "Porta"}, "[cnvchr=0]", "chr$(65)"},
        {"#LIG - Porta [X=1]", {"LIG", "IDE", 1, "Porta"}, "[X=1]", "A"},
        {"#LIG :TX", {"LIG", "IDE", 1, ""}, "", "A"},
        {"#LIG - Porta chr$(65)", {"LIG", "IDE", 1, "Porta A"}, "", "A"}};
    for (const auto& [header, zone, espLst, value] : cases) {
        Open({header, "Porta [P]=chr$(65)", "##"});
        EXPECT_EQ(NextZone(opc), zone) << header;
        EXPECT_EQ(opc.specials(), espLst) << header;
        EXPECT_EQ(opc.memory().size() > 1 ? opc.memory()[1].vtx : "", value) << header;
        opc.ZonFim();
    }
}

TEST_F(Zones, IdeZonesRegisterOnlyAssignmentsWithAnIdentifierTxZonesEveryLineNotEmpty) {
    Open(
        Split("#LIG\n' coment\xE1rio\n$ marcada\n$$ marcada\n? livre\nPorta=COM2\nPorta []=COM2\n"
              "ab=1\n   \n\nPorta 1 [ ser ]=COM1\nPorta [SER]= COM1,9600\n##\n#T:TX\n"
              "' coment\xE1rio\n\n   \nPorta [P]=1\n#falso\n##\n#VAZIA:TX\n##"));
    EXPECT_EQ(NextZone(opc), (Zone{"LIG", "IDE", 2, ""}));
    ASSERT_EQ(opc.memory().size(), 3U);
    EXPECT_EQ(opc.memory()[1].txp, "Porta 1 [ ser ]=COM1");
    EXPECT_EQ(opc.memory()[2].vtx, " COM1,9600");
    EXPECT_EQ(NextZone(opc), (Zone{"T", "TX", 4, ""}));
    EXPECT_EQ(opc.records(), (Words{"", "' coment\xE1rio", "   ", "Porta [P]=1", "#falso"}));
    EXPECT_EQ(opc.memory().size(), 3u) << "a TX zone registers nothing";
    EXPECT_EQ(NextZone(opc), (Zone{"VAZIA", "TX", 0, ""}));
    Words txz{"velho"};
    opc.ZonArr("TX", 0, txz);
    EXPECT_EQ(txz, Words{""});
}

TEST_F(Zones, MistakesInTheFileGiveTheZonesTheWalkCanSee) {
    // An IDE zone not closed swallows the next one; an end line may have more after "##".
    const std::tuple<Words, std::vector<Zone>> cases[] = {
        {{"#A", "X [X]=1", "#B", "Y [Y]=2"}, {{"A", "IDE", 2, ""}, kEnd}},
        {{"#A", "X [X]=1", "## fim de A", "#B:TX", "b", "##"},
         {{"A", "IDE", 1, ""}, {"B", "TX", 1, ""}, kEnd}}};
    for (const auto& [body, expected] : cases) {
        Open(body);
        std::vector<Zone> zones;
        do {
            zones.push_back(NextZone(opc));
        } while (!zones.back().ide.empty());
        opc.ZonFim();
        EXPECT_EQ(zones, expected) << body[2];
    }
}

TEST_F(Zones, OnlyIdeZonesNamedDefOrOpcBuildOptions) {
    Open({"#def", "Chave [K]=1", "##", "#OPC", "Op\xE7\xE3o [O]=a", "Ficheiro [F:Fic]=[K].txt",
          "##", "#DEF:TX", "Chave [K]=2", "##", "#OPC:TX", "Op\xE7\xE3o [O]=b", "##", "#DEFX",
          "Chave [K]=3", "##"});
    EXPECT_EQ(NextZone(opc).ide, "DEF");
    EXPECT_EQ(opc.option("K"), "1");
    EXPECT_EQ(NextZone(opc).ide, "OPC");
    ASSERT_EQ(opc.optionTable().size(), 3U);
    EXPECT_EQ(opc.optionTable()[2].vtx, "1.txt") << "a file option's references are replaced";
    for (const int cnt : {0, -1}) {
        opc.ZonOpcPrp(static_cast<std::int16_t>(cnt));
        EXPECT_EQ(opc.optionTable().size(), 1U) << cnt;
    }
    opc.ZonOpcPrp(2);
    for (int i = 0; i < 3; ++i)
        NextZone(opc);
    EXPECT_EQ(opc.option("K"), "1");
    ASSERT_EQ(opc.optionTable().size(), 3U);
    EXPECT_EQ(opc.OpcTabPrp("x,o"), 1);
    std::string txi, vop;
    opc.OpcTabCon(txi, vop);
    EXPECT_EQ(txi + "=" + vop, "Op\xE7\xE3o=a");
    opc.OpcTabCon(txi, vop);
    EXPECT_EQ(txi + vop, "") << "after the last";
    opc.ZonFim();
    opc.KvIni();
    EXPECT_EQ(opc.option("K") + std::to_string(opc.memory().size()), "1") << "KvIni empties all";
}

// Each ZonIni counts again.
TEST_F(Zones, ZonesPastTheSixteenBitCountAreReadToTheirEnd) {
    for (const std::string kind : {"", ":TX"}) {
        Words body{"#GRANDE" + kind};
        body.insert(body.end(), 32769, "Linha [L]=1");
        body.insert(body.end(), {"##", "#SEGUINTE", "P [P]=1", "##"});
        Open(body);
        EXPECT_EQ(NextZone(opc).cnt, 32767) << kind;
        EXPECT_EQ(NextZone(opc), (Zone{"SEGUINTE", "IDE", 1, ""})) << kind;
        EXPECT_EQ(opc.DroppedRows(), 2) << kind;
        opc.ZonFim();
    }
}

TEST_F(Zones, TheMemoryTableFindsEntriesByIndexNameOrRoundedNumberWithTheTypedValueRule) {
    std::int16_t cnt = 0;
    for (const auto* line : {"Porta [PORTA] = COM1", "x [DEF.DbgModo] = 1", "y [ a . b ]=2",
                             "Pausa = 5", "Esc [ESC]=&H1B"}) {
        opc.MemOpcPrp(line);
        opc.MemReg(cnt, 0);
    }
    EXPECT_EQ(cnt, 4);
    // name, target, value (exi 1, tpp "=")
    const std::tuple<std::string, Variant, Variant> byName[] = {
        {"porta ", "", " COM1"}, {"DbgModo", Variant(), 1.0}, {"ESC", 1.0, 27.0}};
    for (const auto& [name, target, value] : byName) {
        Variant vp = target;
        std::int16_t exi = -1;
        std::string tpp = "old";
        opc.MemCon(name, vp, exi, tpp);
        EXPECT_EQ(std::make_tuple(vp, exi, tpp), std::make_tuple(value, 1, "=")) << name;
    }
    const std::tuple<Variant, std::int16_t, std::string> byNumber[] = {
        {2.5, 2, "x [DEF.DbgModo] = 1"},
        {3.5, 4, "Esc [ESC]=&H1B"},
        {" dbgmodo ", 2, "x [DEF.DbgModo] = 1"},
        {"NADA", -1, ""},
        {70000.0, -1, ""},
        {std::int16_t{5}, 5, ""}};
    for (const auto& [op, expectedIdx, expectedTxp] : byNumber) {
        std::int16_t idx = 99, exi = -1;
        std::string txp = "old";
        opc.MemIdxUsa(op, idx);
        opc.MemConTxp(op, txp, exi);
        // number 0 is the empty entry
        EXPECT_EQ(std::make_tuple(idx, txp, exi),
                  std::make_tuple(expectedIdx, expectedTxp, expectedIdx >= 0 && expectedIdx <= 4))
            << expectedTxp;
    }
    // A missing index clears every output; MemOpcReg appends after the last entry.
    std::string var = "old", tpp = "old";
    Variant vp("x");
    std::int16_t exi = -1;
    opc.MemConIdx(9, var, vp, tpp, exi);
    EXPECT_EQ(std::make_tuple(var, tpp, vp, exi), std::make_tuple("", "", Variant(""), 0));
    opc.MemOpcReg("NOVA", Variant(7.0));
    ASSERT_EQ(opc.memory().size(), 6u);
    EXPECT_EQ(opc.memory()[4].txp + "|" + opc.memory()[5].var + "=" + opc.memory()[5].vtx,
              "Esc [ESC]=&H1B|NOVA=7");
}

TEST_F(Zones, OptionFileGroupSelectionPicksEntriesInFileOrder) {
    const std::string fic = ParameterFile(
        dir, "Programas.tbo",
        Split("#DEF - Geral\nBase [DirBas]=C:\\LUMBRA\n##\n#TBO - Programas\n"
              "Editor de texto [1:DIV]=[DirBas]\\notepad.exe\nCalculadora [0:DIV]=calc.exe\n"
              "Gaveta [1:GAV]= [DirBas]\\gav\\abrir.exe \nEspaco [ 1:DIV]=x\nMinusculas [1:div]=z\n"
              "Sem grupo [1]=w\nSem colchetes = v\n' comentario [1:DIV]=c\n##\n"
              "#LIG - Outra zona\nPorta [1:DIV]=COM1\n##\n#TBO:TX - Texto\nTexto [1:DIV]=t\n##\n"
              "#tbo - Mais\nOutro [1:GAV]=o.exe\n##"));
    // The TX zone registers nothing: its one line reads record 1 left by the LIG zone.
    const std::tuple<std::string, Words> cases[] = {
        {"",
         {"Editor de texto", "Calculadora", "Gaveta", "Espaco", "Minusculas", "Sem grupo", "Porta",
          "Outro"}},
        {"*", {"Editor de texto", "Gaveta", "Minusculas", "Sem grupo", "Porta", "Outro"}},
        {"div", {"Minusculas"}},
        {"DIV, GAV", {"Editor de texto", "Porta"}},
        {"DIV,GAV", {"Editor de texto", "Gaveta", "Porta", "Outro"}}};
    TdaOpc::TboMat m;
    std::int16_t nop = -1;
    opc.tbOpcPro(m, nop, 2);
    EXPECT_EQ(nop, 0) << "before any tbOpcPrp";
    for (const auto& [grv, expected] : cases) {
        nop = -1;
        opc.tbOpcPrp(fic, grv, "TBO", nop);
        Words names;
        for (std::size_t i = 1; i < opc.entries().size(); ++i)
            names.push_back(opc.entries()[i].txi);
        EXPECT_EQ(std::make_tuple(names, nop),
                  std::make_tuple(expected, static_cast<std::int16_t>(expected.size())))
            << grv;
        EXPECT_EQ(opc.fileCount(), 0) << "the file is closed after reading";
    }
    EXPECT_EQ(opc.option("DirBas"), "C:\\LUMBRA") << "its DEF zone loads the options";
    opc.tbOpcPro(m, nop, 2);
    EXPECT_EQ(std::make_tuple(nop, m[4].size()), std::make_tuple(2, 3u));
    EXPECT_EQ((Words{m[0][2], m[1][2], m[2][2], m[3][2], m[5][2], m[6][2], m[7][2]}),
              (Words{"1", "Gaveta", "GAV", "[DirBas]\\gav\\abrir.exe",
                     " C:\\LUMBRA\\gav\\abrir.exe ", "C:\\LUMBRA\\gav", "abrir.exe"}));
}

}  // namespace
}  // namespace lumbra::test
