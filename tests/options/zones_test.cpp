// The zone walk on real parameter files: headers, IDE and TX bodies, the DEF and OPC zones, the
// memory table the records go to, the files a technician gets wrong, and the option-table files
// read through it.

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <vector>

#include "tests/options/tda_opc.h"
#include "util/lists/keyed_list.h"

namespace lumbra::test {
namespace {

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

TEST(ZoneWalk, TheExampleFileGivesItsThreeZonesCallByCall) {
    TempDir dir;
    const ScopedProgram program({"-FP", "x.par", "-COM1", "/dev/ttyUSB0"});
    OpenTdaOpc opc;
    opc.ZonIni(
        ParameterFile(dir, "Lumbra.par",
                      {"#DEF Geral - Geral", "Modo de depura\xE7\xE3o [DbgModo]=0",
                       "Direct\xF3rio base [DirBas]=C:\\LUMBRA", "##", "' texto entre zonas",
                       "#LIG Liga\xE7\xE3o", "Porta de liga\xE7\xE3o [Porta]=1", "' coment\xE1rio",
                       "Velocidade [Vel]=9600", "##", "#AJUDA:TX Texto - Ajuda [CnvChr=0]",
                       "Primeira linha chr$(65)", "", "' tamb\xE9m guardada", "##"}));
    opc.LcPrpArg("antes");

    EXPECT_EQ(NextZone(opc), (Zone{"DEF", "IDE", 2, "Geral"}));
    std::vector<std::string> expected;
    std::int16_t ok = 0;
    LstIni(expected);
    LstAct(expected, "DBGMODO", "0", ok);
    LstAct(expected, "DIRBAS", "C:\\LUMBRA", ok);
    EXPECT_EQ(opc.options(), expected);
    EXPECT_EQ(opc.LcArgC(), 4) << "the DEF zone re-reads the command line";

    EXPECT_EQ(NextZone(opc), (Zone{"LIG", "IDE", 2, ""}));
    EXPECT_EQ(opc.memory().at(2).var, "VEL");
    Variant gone = "";
    std::int16_t exi = -1;
    opc.MemCon("DIRBAS", gone, exi);
    EXPECT_EQ(exi, 0) << "the names of the previous zone are forgotten";
    EXPECT_EQ(opc.options(), expected) << "an IDE zone leaves the option list alone";

    EXPECT_EQ(NextZone(opc), (Zone{"AJUDA", "TX", 2, "Ajuda"}));
    EXPECT_EQ(opc.specials(), "[CnvChr=0]");
    EXPECT_EQ(opc.records(),
              (std::vector<std::string>{"", "Primeira linha chr$(65)", "' tamb\xE9m guardada"}));

    EXPECT_EQ(NextZone(opc), kEnd);
    EXPECT_EQ(NextZone(opc), kEnd) << "an exhausted walk keeps answering the end";
    opc.ZonFim();
    EXPECT_EQ(opc.fileCount(), 0);
}

TEST(ZoneWalk, HeaderLinesGiveIdentifierKindAndInformationText) {
    const struct {
        std::string header;
        Zone zone;
        std::string espLst, value;
    } cases[] = {
        {"#ajuda:tx Texto - Ajuda [CnvChr=0]", {"AJUDA", "TX", 1, "Ajuda"}, "[CnvChr=0]", ""},
        // [CnvChr=0] keeps the zone's values as written; any other item leaves them decoded.
        {"#LIG - Porta [cnvchr=0]", {"LIG", "IDE", 1, "Porta"}, "[cnvchr=0]", "chr$(65)"},
        {"#LIG - Porta [X=1]", {"LIG", "IDE", 1, "Porta"}, "[X=1]", "A"},
        // A blank ends the head, so ":TX" after it is description, not the kind.
        {"#LIG :TX", {"LIG", "IDE", 1, ""}, "", "A"},
        {"#LIG - Porta chr$(65)", {"LIG", "IDE", 1, "Porta A"}, "", "A"},
    };
    for (const auto& c : cases) {
        TempDir dir;
        OpenTdaOpc opc;
        opc.ZonIni(ParameterFile(dir, "z.par", {c.header, "Porta [P]=chr$(65)", "##"}));
        EXPECT_EQ(NextZone(opc), c.zone) << c.header;
        EXPECT_EQ(opc.specials(), c.espLst) << c.header;
        EXPECT_EQ(opc.memory().size() > 1 ? opc.memory()[1].vtx : "", c.value) << c.header;
        opc.ZonFim();
    }
}

TEST(ZoneWalk, IdeZonesRegisterOnlyAssignmentsWithAnIdentifier) {
    TempDir dir;
    OpenTdaOpc opc;
    opc.ZonIni(ParameterFile(dir, "z.par",
                             {"#LIG", "' coment\xE1rio", "$ marcada", "$$ marcada", "? livre",
                              "Porta=COM2", "Porta []=COM2", "ab=1", "   ", "",
                              "Porta 1 [ ser ]=COM1", "Porta [SER]= COM1,9600", "##"}));
    EXPECT_EQ(NextZone(opc), (Zone{"LIG", "IDE", 2, ""}));
    ASSERT_EQ(opc.memory().size(), 3U);
    EXPECT_EQ(opc.memory()[1].txp, "Porta 1 [ ser ]=COM1");
    EXPECT_EQ(opc.memory()[2].vtx, " COM1,9600");
}

TEST(ZoneWalk, TxZonesKeepEveryLineThatIsNotEmpty) {
    TempDir dir;
    OpenTdaOpc opc;
    opc.ZonIni(ParameterFile(
        dir, "z.par",
        {"#T:TX", "' coment\xE1rio", "", "   ", "Porta [P]=1", "#falso", "##", "#VAZIA:TX", "##"}));
    EXPECT_EQ(NextZone(opc), (Zone{"T", "TX", 4, ""}));
    EXPECT_EQ(opc.records(),
              (std::vector<std::string>{"", "' coment\xE1rio", "   ", "Porta [P]=1", "#falso"}));
    EXPECT_EQ(opc.memory().size(), 1u) << "a TX zone registers nothing";
    EXPECT_EQ(NextZone(opc), (Zone{"VAZIA", "TX", 0, ""}));
    std::vector<std::string> txz{"velho"};
    opc.ZonArr("TX", 0, txz);
    EXPECT_EQ(txz, std::vector<std::string>{""});
}

TEST(ZoneWalk, MistakesInTheFileGiveTheZonesTheWalkCanSee) {
    const struct {
        std::string what;
        std::vector<std::string> body;
        std::vector<Zone> zones;
    } cases[] = {
        {"an IDE zone not closed swallows the next one and its header",
         {"#A", "X [X]=1", "#B", "Y [Y]=2"},
         {{"A", "IDE", 2, ""}, kEnd}},
        {"an end line with more after ##",
         {"#A", "X [X]=1", "## fim de A", "#B:TX", "b", "##"},
         {{"A", "IDE", 1, ""}, {"B", "TX", 1, ""}, kEnd}},
    };
    for (const auto& c : cases) {
        TempDir dir;
        OpenTdaOpc opc;
        opc.ZonIni(ParameterFile(dir, "z.par", c.body));
        std::vector<Zone> zones;
        do {
            zones.push_back(NextZone(opc));
        } while (!zones.back().ide.empty());
        opc.ZonFim();
        EXPECT_EQ(zones, c.zones) << c.what;
    }
}

TEST(ZoneWalk, OnlyIdeZonesNamedDefOrOpcBuildOptions) {
    TempDir dir;
    OpenTdaOpc opc;
    opc.ZonIni(ParameterFile(
        dir, "z.par",
        {"#def", "Chave [K]=1", "##", "#OPC", "Op\xE7\xE3o [O]=a", "##", "#DEF:TX", "Chave [K]=2",
         "##", "#OPC:TX", "Op\xE7\xE3o [O]=b", "##", "#DEFX", "Chave [K]=3", "##"}));
    EXPECT_EQ(NextZone(opc).ide, "DEF");
    EXPECT_EQ(opc.option("K"), "1");
    EXPECT_EQ(NextZone(opc).ide, "OPC");
    for (int i = 0; i < 3; ++i)
        NextZone(opc);
    EXPECT_EQ(opc.option("K"), "1");
    ASSERT_EQ(opc.optionTable().size(), 2U);
    EXPECT_EQ(opc.optionTable()[1].vtx, "a");
}

TEST(ZoneWalk, ZonesPastTheSixteenBitCountAreReadToTheirEnd) {
    for (const std::string kind : {"", ":TX"}) {
        std::vector<std::string> body{"#GRANDE" + kind};
        body.insert(body.end(), 32769, "Linha [L]=1");
        body.insert(body.end(), {"##", "#SEGUINTE", "P [P]=1", "##"});
        TempDir dir;
        OpenTdaOpc opc;
        opc.ZonIni(ParameterFile(dir, "z.par", body));
        EXPECT_EQ(NextZone(opc).cnt, 32767) << kind;
        EXPECT_EQ(NextZone(opc), (Zone{"SEGUINTE", "IDE", 1, ""})) << kind;
        EXPECT_EQ(opc.DroppedRows(), 2) << kind;
    }
}

// Prepares each line as the current parameter and registers it; the count that results.
std::int16_t Register(TdaOpc& opc, const std::vector<std::string>& lines, std::int16_t reg = 0) {
    std::int16_t cnt = 0;
    for (const auto& line : lines) {
        opc.MemOpcPrp(line);
        opc.MemReg(cnt, reg);
    }
    return cnt;
}

TEST(MemoryTable, FindsEntriesByIndexNameOrRoundedNumberWithTheTypedValueRule) {
    OpenTdaOpc opc;
    EXPECT_EQ(Register(opc, {"Porta [PORTA] = COM1", "x [DEF.DbgModo] = 1", "y [ a . b ]=2",
                             "Pausa = 5", "Esc [ESC]=&H1B"}),
              4);
    const struct {
        std::string name;
        Variant target, value;
        std::int16_t exi;
        std::string tpp;
    } byName[] = {
        {"porta ", "", " COM1", 1, "="},
        {"DbgModo", Variant(), 1.0, 1, "="},
        {"ESC", 1.0, 27.0, 1, "="},
    };
    for (const auto& c : byName) {
        Variant vp = c.target;
        std::int16_t exi = -1;
        std::string tpp = "old";
        opc.MemCon(c.name, vp, exi, tpp);
        EXPECT_EQ(vp, c.value) << c.name;
        EXPECT_EQ(exi, c.exi) << c.name;
        EXPECT_EQ(tpp, c.tpp) << c.name;
    }
    const struct {
        Variant op;
        std::int16_t idx;
        std::string txp;
    } byNumber[] = {
        {2.5, 2, "x [DEF.DbgModo] = 1"},
        {3.5, 4, "Esc [ESC]=&H1B"},
        {" dbgmodo ", 2, "x [DEF.DbgModo] = 1"},
        {"NADA", -1, ""},
        {70000.0, -1, ""},
        {std::int16_t{5}, 5, ""},
    };
    for (const auto& c : byNumber) {
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

// An option-table file with entries of every shape.
std::string TableFile(const TempDir& dir) {
    return ParameterFile(
        dir, "Programas.tbo",
        Split("#DEF - Geral\nBase [DirBas]=C:\\LUMBRA\n##\n#TBO - Programas\n"
              "Editor de texto [1:DIV]=[DirBas]\\notepad.exe\nCalculadora [0:DIV]=calc.exe\n"
              "Gaveta [1:GAV]= [DirBas]\\gav\\abrir.exe \nEspaco [ 1:DIV]=x\nMinusculas [1:div]=z\n"
              "Sem grupo [1]=w\nSem colchetes = v\n' comentario [1:DIV]=c\n##\n"
              "#LIG - Outra zona\nPorta [1:DIV]=COM1\n##\n#TBO:TX - Texto\nTexto [1:DIV]=t\n##\n"
              "#tbo - Mais\nOutro [1:GAV]=o.exe\n##"));
}

TEST(OptionFiles, TheGroupSelectionPicksEntriesInFileOrder) {
    TempDir dir;
    OpenTdaOpc opc;
    using Names = std::vector<std::string>;
    const struct {
        std::string grv;
        Names names;
    } cases[] = {
        // The TX zone registers nothing: its one line reads record 1 left by the LIG zone.
        {"",
         {"Editor de texto", "Calculadora", "Gaveta", "Espaco", "Minusculas", "Sem grupo", "Porta",
          "Outro"}},
        {"*", {"Editor de texto", "Gaveta", "Minusculas", "Sem grupo", "Porta", "Outro"}},
        {"DIV,GAV", {"Editor de texto", "Gaveta", "Porta", "Outro"}},
        {"DIV, GAV", {"Editor de texto", "Porta"}},
        {"div", {"Minusculas"}},
    };
    for (const auto& c : cases) {
        std::int16_t nop = -1;
        opc.tbOpcPrp(TableFile(dir), c.grv, "TBO", nop);
        Names names;
        for (std::size_t i = 1; i < opc.entries().size(); ++i)
            names.push_back(opc.entries()[i].txi);
        EXPECT_EQ(names, c.names) << c.grv;
        EXPECT_EQ(nop, static_cast<std::int16_t>(c.names.size())) << c.grv;
        EXPECT_EQ(opc.fileCount(), 0) << "the file is closed after reading";
    }
    EXPECT_EQ(opc.option("DirBas"), "C:\\LUMBRA") << "its DEF zone loads the options";
}

}  // namespace
}  // namespace lumbra::test
