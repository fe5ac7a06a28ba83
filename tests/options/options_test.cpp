// Options: the three sources of a key, bracketed references between options, the option list
// kept by OpcAct, the memory-table and debug queries built on them, and the option table walked by
// name prefix.

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <vector>

#include "tests/options/tda_opc.h"
#include "util/lists/keyed_list.h"

namespace lumbra::test {
namespace {

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
