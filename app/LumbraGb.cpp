#include "app/LumbraGb.h"

#include "channels/PgmFic.h"
#include "options/TdaOpc.h"
#include "util/files/text_files.h"
#include "util/text/chars.h"
#include "util/text/variant.h"

namespace lumbra {
namespace {

// Rows 0..cnt from the records of the zone the engine has just read; row 0 stays empty. The count
// may reach 32767, so the loop runs on int.
template <typename Row, typename MakeRow>
std::vector<Row> ReadZoneRows(TdaOpc& opc, std::int16_t cnt, MakeRow makeRow) {
    std::vector<Row> tab(static_cast<std::size_t>(cnt < 0 ? 0 : cnt) + 1);
    for (int r = 1; r <= cnt; ++r) {
        std::string txp, txi, ide, vtx;
        std::int16_t ptx = 0;
        std::int16_t exi = 0;
        opc.MemConTxp(Variant(static_cast<std::int16_t>(r)), txp, exi);
        opc.ParPrep(txp, txi, ide, vtx, ptx);
        tab[static_cast<std::size_t>(r)] = makeRow(std::move(txi), std::move(ide), std::move(vtx));
    }
    return tab;
}

std::vector<LinReg> ReadLinZone(TdaOpc& opc, std::int16_t cnt) {
    return ReadZoneRows<LinReg>(opc, cnt, [](std::string txi, std::string ide, std::string vtx) {
        return LinReg{"", std::move(txi), UpperCase(TrimBlanks(ide)), std::move(vtx)};
    });
}

std::vector<CmdReg> ReadCmdZone(TdaOpc& opc, std::int16_t cnt) {
    return ReadZoneRows<CmdReg>(opc, cnt, [](std::string txi, std::string ide, std::string vtx) {
        return CmdReg{std::move(ide), std::move(txi), std::move(vtx)};
    });
}

void ReadDefZone(TdaOpc& opc, LumbraGbState& g) {
    opc.OpcCon("DbgModo", g.DbgModo);
    opc.OpcPath("DirBas", g.DirBas);
    opc.OpcPath("DirDiv", g.DirDiv);
    opc.OpcPath("DirTmp", g.DirTmp);
    opc.OpcPath("DirOpc", g.DirOpc);
}

}  // namespace

LumbraGbState::LumbraGbState() = default;
LumbraGbState::~LumbraGbState() = default;
LumbraGbState::LumbraGbState(LumbraGbState&&) noexcept = default;
LumbraGbState& LumbraGbState::operator=(LumbraGbState&&) noexcept = default;

LumbraGbState& Gb() {
    // Never destroyed: the program may end at once from inside a load, while the engine still
    // holds a numbered file, and the file table must not be torn down before it.
    static LumbraGbState* state = new LumbraGbState();
    return *state;
}

void LumbraIni() {
    CanIni();
    LumbraCfgLer("Lumbra.par");
}

void LumbraCfgLer(const std::string& nfp) {
    LumbraGbState& g = Gb();
    if (!g.cfgOpc) g.cfgOpc = std::make_unique<TdaOpc>();
    TdaOpc& opc = *g.cfgOpc;

    opc.LcIni(nfp);
    opc.ZonIni(opc.LcFpa(), "");
    g.cfgFic = opc.LcFpa();

    std::string ide, tip, txi;
    std::int16_t cnt = 0;
    opc.ZonSeg(ide, tip, cnt, txi);
    while (!ide.empty()) {
        if (ide == "DEF") {
            ReadDefZone(opc, g);
        } else if (ide == "LIG") {
            g.ligTab = ReadLinZone(opc, cnt);
        } else if (ide == "GAV") {
            g.gavTab = ReadLinZone(opc, cnt);
        } else if (ide == "DIS_OPC") {
            g.disTab = ReadLinZone(opc, cnt);
        } else if (ide == "DIS_CMD") {
            g.cmdTab = ReadCmdZone(opc, cnt);
        }
        opc.ZonSeg(ide, tip, cnt, txi);
    }
    opc.ZonFim();
    // The DEF folders are kept for whoever needs them; reading the configuration makes none, so
    // a file port in a folder that does not exist fails at "Abrir" as it should.
}

void LumbraFim() {
    CanFim();
}

}  // namespace lumbra
