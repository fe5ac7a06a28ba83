// The zone walk on real parameter files: headers, IDE and TX bodies, the DEF and OPC zones, the
// contents handed out by ZonArr, and the files a technician gets wrong.

#include <gtest/gtest.h>

#include <cstdint>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "tests/options/open_zones.h"
#include "util/lists/keyed_list.h"

namespace lumbra::test {
namespace {

struct Zone {
    std::string ide, tip;
    std::int16_t cnt = 0;
    std::string txi;
    friend bool operator==(const Zone&, const Zone&) = default;
};

void PrintTo(const Zone& z, std::ostream* os) {
    *os << "{" << z.ide << ", " << z.tip << ", " << z.cnt << ", \"" << z.txi << "\"}";
}

Zone NextZone(TdaOpc& opc) {
    Zone z{"?", "?", -1, "?"};
    opc.ZonSeg(z.ide, z.tip, z.cnt, z.txi);
    return z;
}

// Every zone of the file, the end included.
std::vector<Zone> WalkAll(TdaOpc& opc, const std::string& fic) {
    opc.ZonIni(fic);
    std::vector<Zone> zones;
    do {
        zones.push_back(NextZone(opc));
    } while (!zones.back().ide.empty());
    opc.ZonFim();
    return zones;
}

std::vector<std::string> VarsOf(const std::vector<ParReg>& table) {
    std::vector<std::string> vars;
    for (std::size_t i = 1; i < table.size(); ++i)
        vars.push_back(table[i].var);
    return vars;
}

const Zone kEnd{"", "IDE", 0, ""};

// The keyed list LstAct makes of these names and values, in order.
std::vector<std::string> KeyedList(const std::vector<std::pair<std::string, std::string>>& items) {
    std::vector<std::string> lst;
    LstIni(lst);
    std::int16_t ok = 0;
    for (const auto& [name, value] : items)
        LstAct(lst, name, value, ok);
    return lst;
}

// The example file of the zone walk: a DEF zone, text between zones, an IDE zone with a comment,
// and a TX zone with its conversion switched off.
std::string ExampleFile(const TempDir& dir) {
    dir.write("Lumbra.par", CrLf({"'Nome       : Lumbra.par",
                                  "'Tipo       : PAR",
                                  "'Data       : 16-07-2003",
                                  "'Versao     : 1.0",
                                  "'Descricao  : Terminal da loja",
                                  "#DEF Geral - Defini\xE7\xF5"
                                  "es",
                                  "Modo de depura\xE7\xE3o [DbgModo]=0",
                                  "Direct\xF3rio base [DirBas]=C:\\LUMBRA",
                                  "Direct\xF3rio tempor\xE1rio [DirTmp]=[DirBas]\\TMP",
                                  "##",
                                  "' texto entre zonas",
                                  "#LIG Liga\xE7\xE3o",
                                  "Porta de liga\xE7\xE3o [Porta]=1",
                                  "' coment\xE1rio",
                                  "Velocidade [Vel]=9600",
                                  "##",
                                  "#AJUDA:TX Texto - Ajuda [CnvChr=0]",
                                  "Primeira linha",
                                  "' tamb\xE9m guardada",
                                  "",
                                  "Segunda linha",
                                  "##"}));
    return dir.file("Lumbra.par");
}

TEST(ZoneWalk, TheExampleFileGivesItsThreeZonesCallByCall) {
    TempDir dir;
    const ScopedProgram program({"-FP", "x.par", "-COM1", "/dev/ttyUSB0"});
    OpenZones opc;
    opc.ZonIni(ExampleFile(dir));
    EXPECT_EQ(opc.ficTip(), "PAR");
    EXPECT_EQ(opc.fileCount(), 1);
    opc.LcPrpArg("antes");

    EXPECT_EQ(NextZone(opc), (Zone{"DEF", "IDE", 3,
                                   "Defini\xE7\xF5"
                                   "es"}));
    EXPECT_EQ(VarsOf(opc.memory()), (std::vector<std::string>{"DBGMODO", "DIRBAS", "DIRTMP"}));
    const auto expected =
        KeyedList({{"DBGMODO", "0"}, {"DIRBAS", "C:\\LUMBRA"}, {"DIRTMP", "[DirBas]\\TMP"}});
    EXPECT_EQ(opc.options(), expected);
    EXPECT_EQ(opc.LcArgC(), 4) << "the DEF zone re-reads the command line";

    EXPECT_EQ(NextZone(opc), (Zone{"LIG", "IDE", 2, ""}));
    EXPECT_EQ(VarsOf(opc.memory()), (std::vector<std::string>{"PORTA", "VEL"}));
    Variant vel = 0.0;
    opc.MemCon("vel", vel);
    EXPECT_EQ(vel, Variant(9600.0));
    Variant gone = "";
    std::int16_t exi = -1;
    opc.MemCon("DIRBAS", gone, exi);
    EXPECT_EQ(exi, 0) << "the names of the previous zone are forgotten";
    EXPECT_EQ(opc.options(), expected) << "an IDE zone leaves the option list alone";

    EXPECT_EQ(NextZone(opc), (Zone{"AJUDA", "TX", 3, "Ajuda"}));
    EXPECT_EQ(opc.specials(), "[CnvChr=0]");
    EXPECT_EQ(opc.conversion(), 0);
    EXPECT_EQ(opc.lines(), (std::vector<std::string>{"", "Primeira linha", "' tamb\xE9m guardada",
                                                     "Segunda linha"}));

    EXPECT_EQ(NextZone(opc), kEnd);
    EXPECT_EQ(NextZone(opc), kEnd) << "an exhausted walk keeps answering the end";
    opc.ZonFim();
    EXPECT_EQ(opc.fileCount(), 0);
}

TEST(ZoneWalk, HeaderLinesGiveIdentifierKindAndInformationText) {
    const struct {
        std::string header;
        Zone zone;
        std::string espLst;
        std::int16_t espAct;
    } cases[] = {
        {"#DEF Geral - Defini\xE7\xF5"
         "es",
         {"DEF", "IDE", 1,
          "Defini\xE7\xF5"
          "es"},
         "",
         1},
        {"#ajuda:tx Texto - Ajuda [CnvChr=0]", {"AJUDA", "TX", 1, "Ajuda"}, "[CnvChr=0]", 0},
        // A blank ends the head, so ":TX" after it is description, not the kind.
        {"#LIG :TX", {"LIG", "IDE", 1, ""}, "", 1},
        {"#T:  TX - a", {"T", "IDE", 1, "a"}, "", 1},
        {"#X:TXT", {"X", "IDE", 1, ""}, "", 1},
        {"#x:Tx   ", {"X", "TX", 1, ""}, "", 1},
        {"#A x - y - z", {"A", "IDE", 1, "y - z"}, "", 1},
        // Nothing, or a blank, right after "#": the caller cannot tell this from the end.
        {"# LIG - x", {"", "IDE", 1, "x"}, "", 1},
        // The header is read with literal expansion on.
        {"#LIG - Porta chr$(65)", {"LIG", "IDE", 1, "Porta A"}, "", 1},
    };
    for (const auto& c : cases) {
        TempDir dir;
        OpenZones opc;
        opc.ZonIni(ParameterFile(dir, "z.par", {c.header, "Porta [P]=1", "##"}));
        EXPECT_EQ(NextZone(opc), c.zone) << c.header;
        EXPECT_EQ(opc.specials(), c.espLst) << c.header;
        EXPECT_EQ(opc.conversion(), c.espAct) << c.header;
        opc.ZonFim();
    }
}

TEST(ZoneWalk, IdeZonesRegisterOnlyAssignmentsWithAnIdentifier) {
    TempDir dir;
    OpenZones opc;
    opc.ZonIni(ParameterFile(dir, "z.par",
                             {"#LIG", "' coment\xE1rio", "$ marcada", "$$ marcada", "? livre",
                              "Porta=COM2", "Porta []=COM2", "ab=1", "   ", "",
                              "Porta 1 [ ser ]=COM1", "Porta [SER]= COM1,9600", "##"}));
    EXPECT_EQ(NextZone(opc), (Zone{"LIG", "IDE", 2, ""}));
    ASSERT_EQ(opc.memory().size(), 3U);
    EXPECT_EQ(opc.memory()[1].var, "SER");
    EXPECT_EQ(opc.memory()[1].txp, "Porta 1 [ ser ]=COM1");
    EXPECT_EQ(opc.memory()[2].vtx, " COM1,9600");
}

TEST(ZoneWalk, TxZonesKeepEveryLineThatIsNotEmpty) {
    TempDir dir;
    OpenZones opc;
    opc.ZonIni(ParameterFile(dir, "z.par",
                             {"#T:TX", "' coment\xE1rio", "", "   ", "$x", "Porta [P]=1", "#falso",
                              "##", "#VAZIA:TX", "##"}));
    EXPECT_EQ(NextZone(opc), (Zone{"T", "TX", 5, ""}));
    EXPECT_EQ(opc.lines(), (std::vector<std::string>{"", "' coment\xE1rio", "   ", "$x",
                                                     "Porta [P]=1", "#falso"}));
    EXPECT_TRUE(opc.memory().size() == 1) << "a TX zone registers nothing";
    EXPECT_EQ(NextZone(opc), (Zone{"VAZIA", "TX", 0, ""}));
    EXPECT_EQ(opc.lines(), std::vector<std::string>{""});
    std::vector<std::string> txz{"velho"};
    opc.ZonArr("TX", 0, txz);
    EXPECT_EQ(txz, std::vector<std::string>{""});
}

TEST(ZoneWalk, CnvChrZeroKeepsNotationsForItsZoneOnly) {
    TempDir dir;
    OpenZones opc;
    opc.ZonIni(ParameterFile(dir, "z.par",
                             {"#GAV - Gaveta [CnvChr=0]", "Abrir [ESC]=chr$(27)+\"p\"", "##",
                              "#DIS_CMD - chr$(66)", "Limpar [CLR]=chr$(12)x", "##"}));
    EXPECT_EQ(NextZone(opc), (Zone{"GAV", "IDE", 1, "Gaveta"}));
    EXPECT_EQ(opc.memory()[1].vtx, "chr$(27)+\"p\"");
    EXPECT_EQ(NextZone(opc), (Zone{"DIS_CMD", "IDE", 1, "B"}));
    EXPECT_EQ(opc.conversion(), 1);
    EXPECT_EQ(opc.memory()[1].vtx, "\x0Cx");
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
        {"a TX zone not closed keeps the next header as text",
         {"#A:TX", "linha", "#B", "Y [Y]=2"},
         {{"A", "TX", 3, ""}, kEnd}},
        {"a zone closed in the middle of the file",
         {"#A", "X [X]=1", "##", "Y [Y]=2", "#B", "Z [Z]=3", "##"},
         {{"A", "IDE", 1, ""}, {"B", "IDE", 1, ""}, kEnd}},
        {"an end line with more after ##",
         {"#A", "X [X]=1", "## fim de A", "#B:TX", "b", "##"},
         {{"A", "IDE", 1, ""}, {"B", "TX", 1, ""}, kEnd}},
        {"a file with no zone", {"' nada", "X [X]=1", "##"}, {kEnd}},
        {"an empty IDE zone", {"#A", "##"}, {{"A", "IDE", 0, ""}, kEnd}},
        {"a zone that occurs twice",
         {"#A", "X [X]=1", "##", "#a", "X [X]=2", "Y [Y]=3", "##"},
         {{"A", "IDE", 1, ""}, {"A", "IDE", 2, ""}, kEnd}},
    };
    for (const auto& c : cases) {
        TempDir dir;
        OpenZones opc;
        EXPECT_EQ(WalkAll(opc, ParameterFile(dir, "z.par", c.body)), c.zones) << c.what;
        EXPECT_EQ(opc.fileCount(), 0) << c.what;
    }
}

TEST(ZoneWalk, OnlyIdeZonesNamedDefOrOpcBuildOptions) {
    TempDir dir;
    OpenZones opc;
    opc.ZonIni(ParameterFile(
        dir, "z.par",
        {"#def", "Chave [K]=1", "##", "#OPC", "Op\xE7\xE3o [O]=a", "##", "#DEF:TX", "Chave [K]=2",
         "##", "#OPC:TX", "Op\xE7\xE3o [O]=b", "##", "#DEFX", "Chave [K]=3", "##"}));
    EXPECT_EQ(NextZone(opc).ide, "DEF");
    EXPECT_EQ(opc.option("K"), "1");
    EXPECT_EQ(NextZone(opc).ide, "OPC");
    ASSERT_EQ(opc.optionTable().size(), 2U);
    for (int i = 0; i < 3; ++i)
        NextZone(opc);
    EXPECT_EQ(opc.option("K"), "1");
    ASSERT_EQ(opc.optionTable().size(), 2U);
    EXPECT_EQ(opc.optionTable()[1].vtx, "a");
}

TEST(ZoneWalk, ZonIniLerProcessesTheFirstZone) {
    TempDir dir;
    OpenZones opc;
    opc.ZonIniLer(ParameterFile(
        dir, "z.par", {"#DEF", "Base [DirBas]=C:\\X", "##", "#LIG", "P [SER]=COM1", "##"}));
    EXPECT_EQ(opc.option("DirBas"), "C:\\X");
    EXPECT_EQ(NextZone(opc), (Zone{"LIG", "IDE", 1, ""}));
}

TEST(ZoneWalk, ZonesPastTheSixteenBitCountAreReadToTheirEnd) {
    const struct {
        std::string header;
        std::string line;
    } cases[] = {{"#GRANDE", "Linha [L]=1"}, {"#GRANDE:TX", "linha"}};
    for (const auto& c : cases) {
        std::vector<std::string> body{c.header};
        body.insert(body.end(), 32769, c.line);
        body.insert(body.end(), {"##", "#SEGUINTE", "P [P]=1", "##"});
        TempDir dir;
        OpenZones opc;
        opc.ZonIni(ParameterFile(dir, "z.par", body));
        EXPECT_EQ(NextZone(opc).cnt, 32767) << c.header;
        EXPECT_EQ(NextZone(opc), (Zone{"SEGUINTE", "IDE", 1, ""})) << c.header;
        EXPECT_EQ(opc.DroppedRows(), 2) << c.header;
    }
}

// A zone whose records exercise every kind of ZonArr.
class ZoneContents : public ::testing::Test {
  protected:
    void SetUp() override {
        opc_.ZonIni(
            ParameterFile(dir_, "z.par",
                          {"#DEF", "Base [DirBas]=C:\\X", "##", "#LIG - Portas", "Nome [A]=1",
                           "Outro [B]= x ", "Repetido [a]=3", "Ref [F:C]=[DirBas]\\y", "##"}));
        NextZone(opc_);
        NextZone(opc_);
    }
    void TearDown() override { opc_.ZonFim(); }

    TempDir dir_;
    OpenZones opc_;
};

TEST_F(ZoneContents, IdeKindsGiveKeyedListsWithTheLaterValueOfARepeatedName) {
    const auto fresh = KeyedList({{"A", "3"}, {"B", " x "}, {"F:C", "[DirBas]\\y"}});
    const auto added = KeyedList({{"Z", "0"}, {"A", "3"}, {"B", " x "}, {"F:C", "[DirBas]\\y"}});
    const auto two = KeyedList({{"A", "1"}, {"B", " x "}});
    const struct {
        std::string tip;
        std::int16_t cnt;
        bool startsWithZ;
        std::vector<std::string> result;
    } cases[] = {
        {"IDE", 4, true, fresh},
        {"IDE", 2, false, two},
        {"IDEx", 4, true, added},
        {"IDE", 40, false, fresh},
    };
    for (const auto& c : cases) {
        auto txz = c.startsWithZ ? KeyedList({{"Z", "0"}}) : std::vector<std::string>{};
        opc_.ZonArr(c.tip, c.cnt, txz);
        EXPECT_EQ(txz, c.result) << "[" << c.tip << "] " << c.cnt;
    }
}

TEST_F(ZoneContents, OtherKindsGiveValuesLinesOrThreeColumns) {
    const struct {
        std::string tip;
        std::int16_t cnt;
        std::vector<std::string> result;
    } cases[] = {
        {"FIC", 4, {"", "1", " x ", "3", "C:\\X\\y"}},
        {"FIC", -1, {""}},
        // Outside "IDE".."IDEx" and without a name of its own, a kind reads the last TX zone: here
        // there was none.
        {"IDEy", 4, {""}},
        {"TX", 4, {""}},
    };
    for (const auto& c : cases) {
        std::vector<std::string> txz{"velho", "velho"};
        opc_.ZonArr(c.tip, c.cnt, txz);
        EXPECT_EQ(txz, c.result) << c.tip << " " << c.cnt;
    }

    TdaOpc::ZonMul table;
    opc_.ZonArr("MUL", 4, table);
    EXPECT_EQ(table, (TdaOpc::ZonMul{{"", "", ""},
                                     {"Nome", "A", "1"},
                                     {"Outro", "B", " x "},
                                     {"Repetido", "A", "3"},
                                     {"Ref", "F:C", "[DirBas]\\y"}}));
}

TEST_F(ZoneContents, TheWrongShapeForMulIsRefused) {
    std::vector<std::string> flat;
    EXPECT_THROW(opc_.ZonArr("MUL", 4, flat), std::invalid_argument);
    TdaOpc::ZonMul table;
    EXPECT_THROW(opc_.ZonArr("IDE", 4, table), std::invalid_argument);
}

}  // namespace
}  // namespace lumbra::test
