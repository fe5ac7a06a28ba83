// The zone walk on real parameter files: headers, IDE and TX bodies, the DEF and OPC zones, the
// memory table, the files a technician gets wrong, and the option-table files read through it.

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <tuple>
#include <vector>

#include "tests/options/tda_opc.h"
#include "util/lists/keyed_list.h"

namespace lumbra::test {
namespace {

using Words = std::vector<std::string>;

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
    Words expected;
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
    EXPECT_EQ(opc.records(), (Words{"", "Primeira linha chr$(65)", "' tamb\xE9m guardada"}));

    EXPECT_EQ(NextZone(opc), kEnd);
    EXPECT_EQ(NextZone(opc), kEnd) << "an exhausted walk keeps answering the end";
    opc.ZonFim();
    EXPECT_EQ(opc.fileCount(), 0);
}

TEST(ZoneWalk, HeaderLinesGiveIdentifierKindAndInformationText) {
    // [CnvChr=0] keeps the zone's values as written; any other item leaves them decoded. A blank
    // ends the head, so ":TX" after it is description, not the kind.
    const std::tuple<std::string, Zone, std::string, std::string> cases[] = {
        {"#ajuda:tx Texto - Ajuda [CnvChr=0]", {"AJUDA", "TX", 1, "Ajuda"}, "[CnvChr=0]", ""},
        {"#LIG - Porta [cnvchr=0]", {"LIG", "IDE", 1, "Porta"}, "[cnvchr=0]", "chr$(65)"},
        {"#LIG - Porta [X=1]", {"LIG", "IDE", 1, "Porta"}, "[X=1]", "A"},
        {"#LIG :TX", {"LIG", "IDE", 1, ""}, "", "A"},
        {"#LIG - Porta chr$(65)", {"LIG", "IDE", 1, "Porta A"}, "", "A"}};
    for (const auto& [header, zone, espLst, value] : cases) {
        TempDir dir;
        OpenTdaOpc opc;
        opc.ZonIni(ParameterFile(dir, "z.par", {header, "Porta [P]=chr$(65)", "##"}));
        EXPECT_EQ(NextZone(opc), zone) << header;
        EXPECT_EQ(opc.specials(), espLst) << header;
        EXPECT_EQ(opc.memory().size() > 1 ? opc.memory()[1].vtx : "", value) << header;
        opc.ZonFim();
    }
}

TEST(ZoneWalk, IdeZonesRegisterOnlyAssignmentsWithAnIdentifierTxZonesEveryLineNotEmpty) {
    TempDir dir;
    OpenTdaOpc opc;
    opc.ZonIni(ParameterFile(dir, "z.par",
                             {"#LIG",
                              "' coment\xE1rio",
                              "$ marcada",
                              "$$ marcada",
                              "? livre",
                              "Porta=COM2",
                              "Porta []=COM2",
                              "ab=1",
                              "   ",
                              "",
                              "Porta 1 [ ser ]=COM1",
                              "Porta [SER]= COM1,9600",
                              "##",
                              "#T:TX",
                              "' coment\xE1rio",
                              "",
                              "   ",
                              "Porta [P]=1",
                              "#falso",
                              "##",
                              "#VAZIA:TX",
                              "##"}));
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

TEST(ZoneWalk, MistakesInTheFileGiveTheZonesTheWalkCanSee) {
    // An IDE zone not closed swallows the next one and its header; an end line may have more
    // after "##".
    const std::tuple<Words, std::vector<Zone>> cases[] = {
        {{"#A", "X [X]=1", "#B", "Y [Y]=2"}, {{"A", "IDE", 2, ""}, kEnd}},
        {{"#A", "X [X]=1", "## fim de A", "#B:TX", "b", "##"},
         {{"A", "IDE", 1, ""}, {"B", "TX", 1, ""}, kEnd}}};
    for (const auto& [body, expected] : cases) {
        TempDir dir;
        OpenTdaOpc opc;
        opc.ZonIni(ParameterFile(dir, "z.par", body));
        std::vector<Zone> zones;
        do {
            zones.push_back(NextZone(opc));
        } while (!zones.back().ide.empty());
        opc.ZonFim();
        EXPECT_EQ(zones, expected) << body[2];
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
        Words body{"#GRANDE" + kind};
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

TEST(MemoryTable, FindsEntriesByIndexNameOrRoundedNumberWithTheTypedValueRule) {
    OpenTdaOpc opc;
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
}

TEST(OptionFiles, TheGroupSelectionPicksEntriesInFileOrder) {
    TempDir dir;
    OpenTdaOpc opc;
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
        {"DIV,GAV", {"Editor de texto", "Gaveta", "Porta", "Outro"}},
        {"DIV, GAV", {"Editor de texto", "Porta"}},
        {"div", {"Minusculas"}}};
    for (const auto& [grv, expected] : cases) {
        std::int16_t nop = -1;
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
}

}  // namespace
}  // namespace lumbra::test
