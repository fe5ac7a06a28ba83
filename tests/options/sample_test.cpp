// The sample parameter file that ships with the program, loaded as the program loads it: every
// zone walked, the DEF options read, and each line of the four configuration zones split into the
// row its comments describe.

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include "options/TdaOpc.h"
#include "tests/options/open_zones.h"
#include "util/text/value.h"

namespace lumbra::test {
namespace {

const std::string kSample = std::string(LUMBRA_SOURCE_DIR) + "/examples/Lumbra.par";

// One configuration row: name, kind, value.
struct Row {
    std::string txi, ide, vtx;
    friend bool operator==(const Row&, const Row&) = default;
};

void PrintTo(const Row& r, std::ostream* os) {
    *os << "{\"" << r.txi << "\", \"" << r.ide << "\", \"" << r.vtx << "\"}";
}

struct Loaded {
    std::vector<std::string> zones;  // identifier, kind and count of every zone, in file order
    std::string DbgModo, DirBas, DirDiv, DirTmp, DirOpc;
    std::vector<Row> lig, gav, dis, cmd;
};

// The rows 1..cnt of the current zone; the kind trimmed and in capitals unless kept as written.
std::vector<Row> ZoneRows(TdaOpc& opc, std::int16_t cnt, bool kindAsWritten) {
    std::vector<Row> rows;
    for (int r = 1; r <= cnt; ++r) {
        std::string txp;
        std::int16_t exi = 0;
        opc.MemConTxp(Variant(static_cast<std::int16_t>(r)), txp, exi);
        Row row;
        std::int16_t ptx = 0;
        opc.ParPrep(txp, row.txi, row.ide, row.vtx, ptx);
        if (!kindAsWritten) row.ide = TxMai(row.ide);
        rows.push_back(row);
    }
    return rows;
}

Loaded LoadAsTheProgramDoes() {
    const ScopedProgram program({"-FP", kSample});
    Loaded cfg;
    TdaOpc opc;
    opc.LcIni("Lumbra.par");
    opc.ZonIni(opc.LcFpa(), "");
    std::string ide;
    std::string tip;
    std::int16_t cnt = 0;
    std::string txi;
    opc.ZonSeg(ide, tip, cnt, txi);
    while (!ide.empty()) {
        cfg.zones.push_back(ide + ":" + tip + ":" + std::to_string(cnt) + " " + txi);
        if (ide == "DEF") {
            opc.OpcCon("DbgModo", cfg.DbgModo);
            opc.OpcPath("DirBas", cfg.DirBas);
            opc.OpcPath("DirDiv", cfg.DirDiv);
            opc.OpcPath("DirTmp", cfg.DirTmp);
            opc.OpcPath("DirOpc", cfg.DirOpc);
        } else if (ide == "LIG") {
            cfg.lig = ZoneRows(opc, cnt, false);
        } else if (ide == "GAV") {
            cfg.gav = ZoneRows(opc, cnt, false);
        } else if (ide == "DIS_OPC") {
            cfg.dis = ZoneRows(opc, cnt, false);
        } else if (ide == "DIS_CMD") {
            cfg.cmd = ZoneRows(opc, cnt, true);
        }
        opc.ZonSeg(ide, tip, cnt, txi);
    }
    opc.ZonFim();
    return cfg;
}

TEST(SampleFile, IsWindows1252WithCrLfAfterEveryLine) {
    std::ifstream in(kSample, std::ios::binary);
    ASSERT_TRUE(in) << kSample;
    const std::string bytes{std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
    ASSERT_GE(bytes.size(), 2U);
    EXPECT_EQ(bytes.substr(bytes.size() - 2), "\r\n");
    std::size_t crlf = 0;
    for (std::size_t p = bytes.find("\r\n"); p != std::string::npos; p = bytes.find("\r\n", p + 2))
        ++crlf;
    EXPECT_EQ(std::count(bytes.begin(), bytes.end(), '\n'), crlf) << "a LF without its CR";
    EXPECT_EQ(std::count(bytes.begin(), bytes.end(), '\r'), crlf) << "a CR without its LF";
    // "ção" in UTF-8 would be C3 A7 C3 A3; in Windows-1252 it is E7 E3.
    EXPECT_EQ(bytes.find("\xC3\xA7"), std::string::npos);
    EXPECT_NE(bytes.find("Configura\xE7\xE3o"), std::string::npos);
}

TEST(SampleFile, LoadsTheZonesAndRowsItsCommentsDescribe) {
    const Loaded cfg = LoadAsTheProgramDoes();

    EXPECT_EQ(cfg.zones, (std::vector<std::string>{"AJUDA:TX:7 Como ler este ficheiro",
                                                   "DEF:IDE:5 Defini\xE7\xF5"
                                                   "es",
                                                   "LIG:IDE:3 Liga\xE7\xE3o \xE0 impressora e "
                                                   "\xE0 gaveta",
                                                   "GAV:IDE:4 Modos de abertura",
                                                   "DIS_OPC:IDE:2 Portas do display do cliente",
                                                   "DIS_CMD:IDE:3 Comandos"}));

    EXPECT_EQ(cfg.DbgModo, "0");
    EXPECT_EQ(cfg.DirBas, "/tmp/lumbra");
    EXPECT_EQ(cfg.DirDiv, "/tmp/lumbra/div");
    EXPECT_EQ(cfg.DirTmp, "/tmp/lumbra/saida");
    EXPECT_EQ(cfg.DirOpc, "/tmp/lumbra/opc");

    EXPECT_EQ(cfg.lig, (std::vector<Row>{
                           {"Impressora s\xE9rie", "SER", "COM1,9600,n,8,1"},
                           {"Ficheiro de teste", "FIC", "/tmp/lumbra/saida/impressora.txt"},
                           {"Impressora paralela", "LPT", "/dev/lp0"},
                       }));
    // Read without conversion: the code lists and the cycle's markers stay as written.
    EXPECT_EQ(cfg.gav,
              (std::vector<Row>{
                  {"ESC p, pino 2", "ESC", "chr$(27)+\"p\"+chr$(0)+chr$(25)+chr$(250)"},
                  {"ESC p, pino 5", "ESC", "chr$(27,112,1,25,250)"},
                  {"Impulso DLE DC4", "DLE", "chr$(16,20,1,0,5)"},
                  {"Ciclo ESC p", "CIC", "chr$(27)+\"p\"+chr$([MO])+chr$([P1])+chr$([P2])"},
              }));
    EXPECT_EQ(cfg.dis, (std::vector<Row>{
                           {"Display s\xE9rie", "SER", "COM2,9600,n,8,1"},
                           {"Display em ficheiro", "FIC", "/tmp/lumbra/saida/display.txt"},
                       }));
    // Read with conversion: the values are the bytes the display receives.
    EXPECT_EQ(cfg.cmd, (std::vector<Row>{
                           {"Limpar", "CLR", "\x0C"},
                           {"Cursor ao in\xED"
                            "cio",
                            "HOME", "\x0B"},
                           {"Sauda\xE7\xE3o", "MSG",
                            "\x0C"
                            "Bem-vindo!\r\nObrigado pela visita"},
                       }));
}

}  // namespace
}  // namespace lumbra::test
