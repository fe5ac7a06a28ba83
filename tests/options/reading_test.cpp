// Reading parameter files: one line's split, logical lines, the header, a file that cannot be
// opened, the command line; then options: their sources, references, OpcAct and the queries.

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <tuple>
#include <vector>

#include "platform/file_handles.h"
#include "platform/msg_box.h"
#include "tests/options/tda_opc.h"
#include "tests/support/recording_msg_sink.h"
#include "util/lists/keyed_list.h"

namespace lumbra::test {
namespace {

using Words = std::vector<std::string>;

TEST(LineSyntax, ParTppAndParPrepSplitALine) {
    const std::string longName(40000, 'a');
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
        {longName + "[x]=1", {"=", "X", longName, "x", "1"}, 0}};
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

TEST(FileStack, AFileThatCannotBeOpenedEndsTheProgramAfterTheMessage) {
    TempDir dir;
    // records (RegPrp) or tboPrp, file, error, the box's origin
    const std::tuple<bool, std::string, std::int16_t, std::string> cases[] = {
        {false, dir.file("falta.par"), 53, "(CFG)"},
        {false, dir.file("pasta/falta.par"), 76, "(CFG)"},
        {true, dir.file("falta.par"), 53, "(LER)"}};
    for (const auto& [records, path, err, inf] : cases) {
        RecordingMsgSink sink;
        OpenTdaOpc opc;
        EXPECT_THROW(records ? opc.RegPrp(path) : opc.tboPrp(path, "CFG"), platform::ProgramEnded);
        const RecordedBox box{"Erro a abrir ficheiro", "Erro : " + std::to_string(err) + "   " +
                                                           platform::ErrDescription(err) +
                                                           "\r\nFicheiro :" + path + "   " + inf};
        EXPECT_EQ(sink.boxes(), std::vector{box});
        EXPECT_EQ(sink.endings().size(), 1u);
    }
}

TEST(CommandLine, LcConFindsTheWordAtAPositionOrAfterASwitch) {
    const std::tuple<std::string, Variant, std::int16_t, Variant> cases[] = {
        {"-fp C:\\A.PAR", "", 1, "C:\\A.PAR"},
        {"-FP", "", 0, ""},
        {"X -FP Y -FP Z", "", 1, "Y"},
        {"-FP 12", 1.0, 1, 12.0}};
    for (const auto& [cmd, target, ok, value] : cases) {
        OpenTdaOpc opc;
        opc.LcPrpArg(cmd);
        Variant vl = target;
        std::int16_t got = -1;
        opc.LcCon("-FP", vl, got);
        EXPECT_EQ(std::make_tuple(got, vl), std::make_tuple(ok, value)) << cmd;
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

// A DEF zone whose options refer to one another in every way a technician may write, then a zone
// of other variables, read with the command line below and the program in /opt/lumbra.
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
        opc_.LcPrpArg("-fp C:\\A.PAR - tra\xE7o -N 12");
    }
    void TearDown() override { opc_.ZonFim(); }

    TempDir dir_;
    ScopedProgram program_{{}, "/opt/lumbra"};
    OpenTdaOpc opc_;
};

TEST_F(Options, OpcConAnswersFromTheProgramTheCommandLineOrTheOptionList) {
    const std::tuple<std::string, Variant, Variant> cases[] = {{"DirTmp", "", "[DirBas]\\TMP"},
                                                               {"Num", 0.0, 12.0},
                                                               {"Nada", "", ""},
                                                               {"APP:PATH", "", "/opt/lumbra"},
                                                               {"LC:FP", "", "C:\\A.PAR"},
                                                               {"LC:", "", "tra\xE7o"},
                                                               {"LC:N", 0.0, 12.0}};
    for (const auto& [chv, target, value] : cases) {
        Variant vop = target;
        opc_.OpcCon(chv, vop);
        EXPECT_EQ(vop, value) << "[" << chv << "]";
    }
}

TEST_F(Options, ReferencesAreReplacedUpToTwentyOnePasses) {
    // N1: one reference replaced first, then 21 more passes.
    const struct {
        std::string chv, path;
    } paths[] = {{" dirtmp ", "C:\\LUMBRA\\TMP"},
                 {"A", "z\\y\\x"},
                 {"Self", "[Self]"},
                 {"Prg", "/opt/lumbra/cfg"},
                 {"N1", "[N24]"}};
    for (const auto& c : paths) {
        std::string path = "velho";
        opc_.OpcPath(c.chv, path);
        EXPECT_EQ(path, c.path) << "OpcPath " << c.chv;
    }
    const struct {
        std::string txo, result;
    } texts[] = {{"[N1]", "[N22]"},
                 {"x[Nada]y[DirBas]", "xyC:\\LUMBRA"},
                 {"[Fec][DirBas]", "]C:\\LUMBRA"},
                 {"[LC:~]-[app:path]", "til-/opt/lumbra"}};
    for (const auto& c : texts) {
        std::string txo = c.txo;
        opc_.OpcSbr(txo);
        Variant sai = 0.0;
        opc_.OpcSbr(c.txo, sai);
        EXPECT_EQ(std::make_tuple(txo, sai), std::make_tuple(c.result, Variant(c.result))) << c.txo;
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

}  // namespace
}  // namespace lumbra::test
