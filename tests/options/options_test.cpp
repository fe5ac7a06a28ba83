// Options: the three sources of a key, bracketed references between options, the option list
// kept by OpcAct, the memory-table and debug queries built on them, and the option table walked by
// name prefix.

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <vector>

#include "options/keyed_list_index.h"
#include "tests/options/open_zones.h"
#include "util/lists/keyed_list.h"

namespace lumbra::test {
namespace {

// A DEF zone whose options refer to one another in every way a technician may write, read with
// the command line -fp C:\A.PAR - traço -N 12 and the program in /opt/lumbra.
class Options : public ::testing::Test {
  protected:
    void SetUp() override {
        std::vector<std::string> body{
            "#DEF Geral - Defini\xE7\xF5"
            "es",
            "Modo de depura\xE7\xE3o [DbgModo]=0",
            "Direct\xF3rio base [DirBas]=C:\\LUMBRA",
            "Direct\xF3rio tempor\xE1rio [DirTmp]=[DirBas]\\TMP",
            "Espa\xE7os [Esp]=  a b  ",
            "N\xFAmero [Num]=12",
            "Texto [Txt]=abc",
            "Hexadecimal [Hex]=&H10",
            "Cadeia [A]=[B]\\x",
            "Cadeia [B]=[C]\\y",
            "Cadeia [C]=z",
            "Pr\xF3prio [Self]=[Self]",
            "Vazio [Vaz]=a[]b[DirBas]",
            "Aberto [Abe]=a[DirBas",
            "Falta [Fal]=[Nada]x",
            "Min\xFAsculas [Min]=[ dirbas ]\\m",
            "Programa [Prg]=[APP:PATH]/cfg",
            "Linha [Lin]=[LC:FP]",
            "Til [LC:~]=til",
            "Fecho [Fec]=]"};
        // N1 refers to N2, and so on; only N30 holds a plain value.
        for (int i = 1; i < 30; ++i)
            body.push_back("Elo [N" + std::to_string(i) + "]=[N" + std::to_string(i + 1) + "]");
        body.push_back("Elo [N30]=fim");
        body.push_back("##");
        opc_.ZonIniLer(ParameterFile(dir_, "o.par", body));
        opc_.LcPrpArg("-fp C:\\A.PAR - tra\xE7o -N 12");
    }
    void TearDown() override { opc_.ZonFim(); }

    TempDir dir_;
    ScopedProgram program_{{}, "/opt/lumbra"};
    OpenZones opc_;
};

TEST_F(Options, OpcConAnswersFromTheProgramTheCommandLineOrTheOptionList) {
    const struct {
        std::string chv;
        Variant target, value;
    } cases[] = {
        {"DirBas", "", "C:\\LUMBRA"},
        {"DirTmp", "", "[DirBas]\\TMP"},
        {"Esp", "", "  a b  "},
        {"Num", 0.0, 12.0},
        {"Txt", 0.0, 0.0},
        {"Hex", 0.0, 16.0},
        {"Nada", "", ""},
        {"APP:PATH", "", "/opt/lumbra"},
        {"LC:FP", "", "C:\\A.PAR"},
        {"LC:", "", "tra\xE7o"},
        {"LC:N", 0.0, 12.0},
        {"LC:Z", "", ""},
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
        {"DirTmp", "C:\\LUMBRA\\TMP"},
        {" dirtmp ", "C:\\LUMBRA\\TMP"},
        {"A", "z\\y\\x"},
        {"Self", "[Self]"},
        {"Fal", "x"},
        {"Min", "C:\\LUMBRA\\m"},
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
        {"[N10]", "fim"},
        {"[DirTmp]", "C:\\LUMBRA\\TMP"},
        {"x[Nada]y[DirBas]", "xyC:\\LUMBRA"},
        {"[Fec][DirBas]", "]C:\\LUMBRA"},
        {"[]", "[]"},
        {"[LC:~]-[app:path]", "til-/opt/lumbra"},
    };
    for (const auto& c : texts) {
        std::string txo = c.txo;
        opc_.OpcSbr(txo);
        EXPECT_EQ(txo, c.result) << "OpcSbr " << c.txo;
        std::string kept = c.txo;
        Variant sai = 0.0;
        opc_.OpcSbr(kept, sai);
        EXPECT_EQ(kept, c.txo);
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
        {"Texto", " a ", "TEXTO", " a "},
        {"Novo", Variant(), "NOVO", ""},
        {"", "vazio", "", "vazio"},
        {std::string("a\0b", 3), "recusado", std::string("A\0B", 3), "recusado"},
    };
    for (const auto& c : cases) {
        opc_.OpcAct(c.chv, c.vop);
        LstAct(expected, c.name, c.text, ok);
        EXPECT_EQ(opc_.options(), expected) << c.name;
    }
    EXPECT_EQ(opc_.option("DirBas"), "D:\\");
    std::string value;
    std::int16_t pos = 0;
    LstCon(opc_.options(), "DIRBAS", value, pos);
    EXPECT_EQ(pos, 2) << "an existing key keeps its position";
}

TEST(OptionList, OpcIniGivesAKeyedListOnlyWithA) {
    const struct {
        std::string mo;
        std::vector<std::string> list;
        std::string after;
    } cases[] = {
        {"A", {"", ""}, "1"},
        {"", {""}, ""},
        {"a", {""}, ""},
    };
    for (const auto& c : cases) {
        OpenZones opc;
        opc.OpcAct("antes", "x");
        opc.OpcIni(c.mo);
        EXPECT_EQ(opc.options(), c.list) << c.mo;
        opc.OpcAct("K", 1.0);
        EXPECT_EQ(opc.option("K"), c.after) << c.mo;
    }
}

TEST(OptionList, TheThirtyTwoThousandAndFirstNameIsRefused) {
    OpenZones opc;
    opc.OpcIni("A");
    for (int i = 1; i <= 32001; ++i)
        opc.OpcAct("K" + std::to_string(i), "v");
    EXPECT_EQ(opc.options().size(), 32002U);
    EXPECT_EQ(opc.options()[1], "32000");
    EXPECT_EQ(opc.option("K32000"), "v");
    EXPECT_EQ(opc.option("K32001"), "");
    opc.OpcAct("K1", "w");
    EXPECT_EQ(opc.option("K1"), "w") << "a full list still takes new values for its names";
}

TEST(KeyedListIndex, AnswersAsTheKeyedListEvenWhenTheListChangedBehindIt) {
    std::int16_t ok = 0;
    std::int16_t pos = 0;
    std::string val;

    std::vector<std::string> followed;
    LstIni(followed);
    KeyedListIndex index;
    index.Reset(followed);
    index.Reg(followed, "A", "1", pos);
    LstAct(followed, "X", "fora", ok);
    index.Con(followed, "X", val, pos);
    EXPECT_EQ(val, "fora");
    EXPECT_EQ(pos, 2);
    index.Reg(followed, "B", "2", pos);
    EXPECT_EQ(pos, 3);
    index.Con(followed, "B", val, pos);
    EXPECT_EQ(val, "2");

    // A list that already had names when the index was reset.
    std::vector<std::string> filled;
    LstIni(filled);
    LstAct(filled, "Z", "0", ok);
    index.Reset(filled);
    index.Con(filled, "Z", val, pos);
    EXPECT_EQ(val, "0");
    index.Reg(filled, "Y", "9", pos);
    EXPECT_EQ(pos, 2);
    index.Con(filled, "Y", val, pos);
    EXPECT_EQ(val, "9");

    // Not a keyed list at all: nothing is added, nothing is found.
    std::vector<std::string> plain{""};
    index.Reset(plain);
    index.Reg(plain, "A", "1", pos);
    EXPECT_EQ(pos, 0);
    EXPECT_EQ(plain, std::vector<std::string>{""});
}

TEST(ZoneValues, OpcArrGivesTheValuesInOrderOfFirstAppearance) {
    TempDir dir;
    OpenZones opc;
    opc.ZonIni(ParameterFile(
        dir, "o.par",
        {"#LIG", "Um [A]=1", "Dois [B]=2", "Outra vez [A]=3", "Tr\xEAs [C]=4", "##"}));
    std::string ide;
    std::string tip;
    std::int16_t cnt = 0;
    opc.ZonSeg(ide, tip, cnt);
    const struct {
        std::int16_t cnt;
        std::vector<std::string> tx;
    } cases[] = {
        {4, {"", "3", "2", "4", ""}},
        {2, {"", "1", "2"}},
        {0, {""}},
        {-3, {""}},
    };
    for (const auto& c : cases) {
        std::vector<std::string> tx{"velho"};
        opc.OpcArr(c.cnt, tx);
        EXPECT_EQ(tx, c.tx) << c.cnt;
    }
    EXPECT_EQ(opc.options(), std::vector<std::string>{""}) << "OpcArr leaves the option list";
    opc.OpcPrp(cnt);
    EXPECT_EQ(opc.option("a"), "3");
}

// A DEF zone for the references, then a zone of other variables.
class MemoryOptions : public ::testing::Test {
  protected:
    void SetUp() override {
        opc_.ZonIniLer(
            ParameterFile(dir_, "m.par",
                          {"#DEF", "Base [DirBas]=C:\\LUMBRA", "##", "#X",
                           "Caminho [Cam]=[DirBas]\\x", "Depura\xE7\xE3o [DbgModo]= modo ",
                           "N\xEDvel [DBG1]=1", "Outro [DbgOutro]=nao", "##"}));
        std::string ide;
        std::string tip;
        std::int16_t cnt = 0;
        opc_.ZonSeg(ide, tip, cnt);
    }
    void TearDown() override { opc_.ZonFim(); }

    TempDir dir_;
    OpenZones opc_;
};

TEST_F(MemoryOptions, MemPathReplacesTheReferencesOfAVariable) {
    const struct {
        std::string var, path;
        std::int16_t exi;
        std::string tpp;
    } cases[] = {
        {" cam ", "C:\\LUMBRA\\x", 1, "="},
        {"DbgModo", " modo ", 1, "="},
        {"Falta", "", 0, ""},
        {"DirBas", "", 0, ""},
    };
    for (const auto& c : cases) {
        std::string path = "velho";
        std::int16_t exi = -1;
        std::string tpp = "velho";
        opc_.MemPath(c.var, path, exi, tpp);
        EXPECT_EQ(path, c.path) << c.var;
        EXPECT_EQ(exi, c.exi) << c.var;
        EXPECT_EQ(tpp, c.tpp) << c.var;
    }
}

TEST_F(MemoryOptions, OpcDbgIsOnWhenTheDbgVariableHoldsTheName) {
    const struct {
        Variant chv, vop, sn, result;
    } cases[] = {
        {"Modo", "", 1.0, "S"},
        {"modo ", 0.0, std::int16_t{1}, std::int16_t{1}},
        {"Modo", "", 0.0, "MODO"},
        {"Modo", 0.0, Variant(), 0.0},
        {std::int16_t{1}, "", 1.0, "S"},
        {"Outro", "", 1.0, "N"},
        {"Outro", Variant(), 1.0, std::int16_t{0}},
        {"Falta", "", 1.0, "N"},
        // No name reads the variable DBG, which is absent: "" equals "".
        {"", "", 1.0, "S"},
    };
    for (const auto& c : cases) {
        Variant vop = c.vop;
        opc_.OpcDbg(c.chv, vop, c.sn);
        EXPECT_EQ(vop, c.result) << (c.chv.isText() ? c.chv.text() : "number");
    }
}

// An option table whose F entries refer to the DEF zone read before it.
class OptionTable : public ::testing::Test {
  protected:
    void SetUp() override {
        opc_.ZonIniLer(ParameterFile(
            dir_, "t.par",
            {"#DEF", "Base [DirBas]=C:\\LUMBRA", "##",
             "#OPC Op\xE7\xF5"
             "es",
             "Direct\xF3rio tempor\xE1rio [F:DirTmp]=[DirBas]\\TMP",
             "Direct\xF3rio base [DirBase]=[DirBas]",
             "Editor de texto [F:Editor]=[DirBas]\\notepad.exe", "N\xFAmero [N]=1", "##"}));
        std::string ide;
        std::string tip;
        std::int16_t cnt = 0;
        opc_.ZonSeg(ide, tip, cnt);
    }
    void TearDown() override { opc_.ZonFim(); }

    struct Entry {
        std::string txi, vop, tpo;
        friend bool operator==(const Entry&, const Entry&) = default;
    };

    // Every entry OpcTabCon hands out, up to the first with an empty name.
    std::vector<Entry> Walk() {
        std::vector<Entry> entries;
        for (;;) {
            Entry e{"?", "?", "?"};
            opc_.OpcTabCon(e.txi, e.vop, e.tpo);
            if (e.txi.empty()) {
                EXPECT_EQ(e, (Entry{"", "", ""}));
                return entries;
            }
            entries.push_back(e);
        }
    }

    TempDir dir_;
    OpenZones opc_;
};

TEST_F(OptionTable, NothingIsSelectedBeforeOpcTabPrp) {
    EXPECT_EQ(opc_.optionTable().size(), 5U);
    EXPECT_TRUE(Walk().empty());
}

TEST_F(OptionTable, OpcTabPrpSelectsByNamePrefixAndOpcTabConWalksTheSelection) {
    const Entry tmp{"Direct\xF3rio tempor\xE1rio", "C:\\LUMBRA\\TMP", "DIRTMP"};
    const Entry base{"Direct\xF3rio base", "[DirBas]", "DIRBASE"};
    const Entry editor{"Editor de texto", "C:\\LUMBRA\\notepad.exe", "EDITOR"};
    const Entry number{"N\xFAmero", "1", "N"};
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
        {"N", {number}},
        {"*,X", {}},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(opc_.OpcTabPrp(c.tpv), static_cast<std::int16_t>(c.entries.size())) << c.tpv;
        EXPECT_EQ(Walk(), c.entries) << c.tpv;
        EXPECT_TRUE(Walk().empty()) << "a finished walk stays finished";
    }
    EXPECT_EQ(opc_.OpcTabPrp(), 0);
}

TEST(OptionTableBeforeAnyOpcZone, SelectsAndGivesNothing) {
    OpenZones opc;
    EXPECT_EQ(opc.OpcTabPrp("*"), 0);
    std::string txi = "?";
    std::string vop = "?";
    std::string tpo = "?";
    opc.OpcTabCon(txi, vop, tpo);
    EXPECT_EQ(txi + vop + tpo, "");
}

}  // namespace
}  // namespace lumbra::test
