// Option-table files: parameter files whose "TBO" zones list selectable entries, each line
// written as name [flag:group]=value. The entries of the chosen groups are read into tboTab and
// handed out as a matrix of ten text columns.

#include <algorithm>
#include <cstdint>
#include <string>

#include "options/TdaOpc.h"
#include "util/files/paths.h"
#include "util/lists/comma_list.h"
#include "util/text/chars.h"
#include "util/text/split.h"

namespace lumbra {

namespace {

// The flag of an active entry, exactly.
constexpr const char* kActive = "1";

// grv "" takes every entry, "*" every active one, anything else the active entries whose group is
// one of its comma-separated elements (exact, case-sensitive).
bool Selected(const std::string& grv, const TboReg& entry) {
    if (grv.empty()) return true;
    if (entry.flg != kActive) return false;
    if (grv == "*") return true;
    std::int16_t ok = 0;
    LstIgu(grv, entry.grp, ok);
    return ok == 1;
}

}  // namespace

void TdaOpc::tbOpcPrp(const std::string& fic, const std::string& grv, const std::string& inf) {
    std::int16_t nop = 0;
    tbOpcPrp(fic, grv, inf, nop);
}

void TdaOpc::tbOpcPrp(const std::string& fic, const std::string& grv, const std::string& inf,
                      std::int16_t& nop) {
    nop = 0;
    tboTab.assign(1, TboReg{});

    ZonIni(fic, inf);
    std::string ide;
    std::string tip;
    std::int16_t cnt = 0;
    std::string txi;
    ZonSeg(ide, tip, cnt, txi);
    while (!ide.empty()) {
        // A TBO zone is read by its count whatever its kind; a TX zone registers nothing, so its
        // count reads the records the memory table still holds.
        if (ide == "TBO") {
            for (std::int16_t i = 1; i <= cnt; ++i) {
                std::string txp;
                MemConTxp(Variant(i), txp);
                TboReg entry;
                std::string inner;
                std::int16_t ptx = 0;
                ParPrep(txp, entry.txi, inner, entry.vtx, ptx);
                std::int16_t found = 0;
                TxSep2(inner, ":", entry.flg, entry.grp, found);
                // nop is 16-bit: entries beyond what it can count are not taken.
                if (!Selected(grv, entry) || nop == INT16_MAX) continue;
                tboTab.push_back(std::move(entry));
                ++nop;
            }
        }
        ZonSeg(ide, tip, cnt, txi);
    }
    ZonFim();
}

void TdaOpc::tbOpcPro(TboMat& Opc, std::int16_t& nop, std::int16_t max) {
    // Before any tbOpcPrp the table has no slot at all; a negative max is taken as 0.
    const std::size_t entries = tboTab.empty() ? 0 : tboTab.size() - 1;
    const std::size_t rows =
        std::min(entries, static_cast<std::size_t>(std::max<std::int16_t>(max, 0)));
    nop = static_cast<std::int16_t>(rows);

    for (std::vector<std::string>& column : Opc)
        column.assign(rows + 1, std::string());
    for (std::size_t i = 1; i <= rows; ++i) {
        const TboReg& entry = tboTab[i];
        std::string resolved;
        OpcSbr(entry.vtx, resolved);
        Opc[0][i] = entry.flg;
        Opc[1][i] = entry.txi;
        Opc[2][i] = entry.grp;
        Opc[3][i] = std::string(TrimBlanks(entry.vtx));
        Opc[5][i] = resolved;
        PathSep(resolved, Opc[6][i], Opc[7][i]);
    }
}

}  // namespace lumbra
