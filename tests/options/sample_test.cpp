// The sample parameter file that ships with the program, as the engine reads it: its bytes, every
// zone walked, the DEF options resolved. The rows it gives the program are checked with the
// program's own loader.

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include "options/TdaOpc.h"
#include "tests/options/open_zones.h"

namespace lumbra::test {
namespace {

const std::string kSample = std::string(LUMBRA_SOURCE_DIR) + "/examples/Lumbra.par";

struct Loaded {
    std::vector<std::string> zones;  // identifier, kind and count of every zone, in file order
    std::string DbgModo, DirBas, DirDiv, DirTmp, DirOpc;
};

Loaded WalkTheSample() {
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

TEST(SampleFile, WalksTheZonesAndResolvesTheFoldersItsCommentsDescribe) {
    const Loaded cfg = WalkTheSample();

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
}

}  // namespace
}  // namespace lumbra::test
