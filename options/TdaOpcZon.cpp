// The zone walk: a parameter file read one zone at a time. A zone opens with a header line that
// begins with "#" and closes with a line that begins with "##". The assignment lines of an IDE
// zone go to the memory table, every line of a TX zone is kept as text; a DEF zone also becomes
// the option list and an OPC zone the option table.

#include <algorithm>
#include <stdexcept>

#include "options/TdaOpc.h"
#include "util/lists/keyed_list.h"
#include "util/text/chars.h"
#include "util/text/split.h"
#include "util/text/value.h"

namespace lumbra {

namespace {

// The kinds of ZonArr that give a keyed list: "IDE" up to "IDEx" in ordinal order.
bool GivesKeyedList(const std::string& tip) {
    return tip >= "IDE" && tip <= "IDEx";
}

// How many of the rows 1..cnt a table of `size` slots has: a count beyond the table is cut to
// it, so that a caller's wrong count gives fewer rows instead of reading past the table.
std::size_t RowsWithin(std::int16_t cnt, std::size_t size) {
    if (cnt <= 0 || size < 2) return 0;
    return std::min(static_cast<std::size_t>(cnt), size - 1);
}

// Whether MemReg would keep a record of this variable name: one with a name after its first ".".
bool Registrable(const std::string& var) {
    std::string rest = var;
    std::string name;
    TxSepMo("PE MT", rest, ".", name);
    return !name.empty();
}

}  // namespace

void TdaOpc::ZonIni(const std::string& fic, const std::string& inf) {
    idxNom.clear();
    droppedRows = 0;
    tboPrp(fic, inf);
}

void TdaOpc::ZonIniLer(const std::string& fic, const std::string& inf) {
    ZonIni(fic, inf);
    std::string ide;
    std::string tip;
    std::int16_t cnt = 0;
    std::string txi;
    ZonSeg(ide, tip, cnt, txi);
}

void TdaOpc::ZonFim() {
    FicFec();
}

void TdaOpc::ZonSeg(std::string& ide, std::string& tip, std::int16_t& cnt) {
    std::string txi;
    ZonSeg(ide, tip, cnt, txi);
}

void TdaOpc::ZonSeg(std::string& ide, std::string& tip, std::int16_t& cnt, std::string& txi) {
    // Each zone registers its records from slot 1 again; the names of the last one are forgotten.
    idxNom.clear();
    ZonCabLer(ide, tip, txi);
    if (tip == "TX") {
        ZonSegTx(cnt);
        return;
    }
    ZonSegIde(cnt);
    if (ide == "DEF") ZonDefPrp(cnt);
    if (ide == "OPC") ZonOpcPrp(cnt);
}

void TdaOpc::ZonCabLer(std::string& ide, std::string& tip, std::string& txi) {
    // The search and the header line itself are read with literal expansion on.
    OpcEspIni();
    std::int16_t ok = 0;
    do {
        LerLin(ok);
    } while (ok == 1 && parAct.tpp != "#");

    // At the end of the file the reader leaves an empty line, which gives ide "".
    std::string head = parAct.txp.empty() ? std::string() : parAct.txp.substr(1);
    std::string rest;
    TxSepMo("SE T", head, " ", rest);
    head = UpperCase(head);

    std::int16_t found = 0;
    TxSep(head, ":", ide, found);
    tip = TxMai(head);
    if (tip != "TX") tip = "IDE";

    // The description runs up to the first "-" and is dropped.
    std::string description;
    TxSep(rest, "-", description, found);
    txi = std::string(TrimBlanks(rest));

    std::int16_t usa = 0;
    OpcEspUsa(txi, usa);
}

void TdaOpc::ZonSegIde(std::int16_t& cnt) {
    cnt = 0;
    std::string tpp;
    std::int16_t ok = 0;
    LerLinCnt(tpp, ok);
    while (tpp != "##" && ok == 1) {
        // Past 32 767 records the table refuses more; the zone is still read to its end so that
        // the walk goes on at the next zone.
        if (tpp == "=") {
            const std::int16_t before = cnt;
            MemReg(cnt, 0);
            if (before == INT16_MAX && Registrable(parAct.var)) ++droppedRows;
        }
        LerLinCnt(tpp, ok);
    }
}

void TdaOpc::ZonSegTx(std::int16_t& cnt) {
    cnt = 0;
    regLin.assign(1, std::string());
    std::string tpp;
    std::int16_t ok = 0;
    LerLinCnt(tpp, ok);
    while (tpp != "##" && ok == 1) {
        // Lines past the 16-bit count are read past and dropped, as the memory table does.
        if (cnt < INT16_MAX) {
            ++cnt;
            regLin.push_back(parAct.txp);
        } else {
            ++droppedRows;
        }
        LerLinCnt(tpp, ok);
    }
}

void TdaOpc::ZonDefPrp(std::int16_t cnt) {
    OpcPrp(cnt);
    LcIni();
}

void TdaOpc::ZonOpcPrp(std::int16_t cnt) {
    const std::size_t rows = RowsWithin(cnt, memTab.size());
    opcTab.assign(rows + 1, ParReg{});
    for (std::size_t j = 1; j <= rows; ++j) {
        ParReg& entry = opcTab[j];
        entry = memTab[j];
        entry.vl = 0;
        std::string kind;
        std::string name;
        ParTipVar(entry.var, kind, name);
        if (kind == "F") OpcSbr(entry.vtx);
    }
}

void TdaOpc::ZonArr(const std::string& tip, std::int16_t cnt, std::vector<std::string>& txz) {
    if (GivesKeyedList(tip)) {
        KeyedListIndex positions;
        ZonArrLst(tip, cnt, txz, positions);
        return;
    }
    if (tip == "MUL") {
        throw std::invalid_argument("ZonArr: the kind MUL gives a table of three columns");
    }

    std::vector<std::string> out;
    if (tip == "FIC") {
        out.resize(RowsWithin(cnt, memTab.size()) + 1);
        for (std::size_t j = 1; j < out.size(); ++j)
            OpcSbr(memTab[j].vtx, out[j]);
    } else {
        out.resize(RowsWithin(cnt, regLin.size()) + 1);
        for (std::size_t j = 1; j < out.size(); ++j)
            out[j] = regLin[j];
    }
    txz = std::move(out);
}

void TdaOpc::ZonArr(const std::string& tip, std::int16_t cnt, ZonMul& txz) {
    if (tip != "MUL") {
        throw std::invalid_argument("ZonArr: only the kind MUL gives a table of three columns");
    }
    ZonMul out(RowsWithin(cnt, memTab.size()) + 1);
    for (std::size_t j = 1; j < out.size(); ++j)
        out[j] = {memTab[j].txi, memTab[j].var, memTab[j].vtx};
    txz = std::move(out);
}

void TdaOpc::ZonArrLst(const std::string& tip, std::int16_t cnt, std::vector<std::string>& txz,
                       KeyedListIndex& positions) {
    // Only "IDE" itself starts from an empty list; the other kinds of its range add to the
    // caller's list.
    if (tip == "IDE") LstIni(txz);
    positions.Reset(txz);
    const std::size_t rows = RowsWithin(cnt, memTab.size());
    for (std::size_t j = 1; j <= rows; ++j) {
        std::int16_t pos = 0;
        positions.Reg(txz, memTab[j].var, memTab[j].vtx, pos);
    }
}

}  // namespace lumbra
