// The memory table: parameters registered from the lines read or set by program code, found again
// by name through the name index or by their number.

#include <algorithm>
#include <cstdint>

#include "options/TdaOpc.h"
#include "util/files/name_index.h"
#include "util/lists/typed_value.h"
#include "util/text/literal.h"
#include "util/text/numeric.h"
#include "util/text/split.h"
#include "util/text/value.h"

namespace lumbra {

namespace {

// Entries are indexed with one kind only.
constexpr std::int16_t kEntryKind = 1;

// The typed value rule of every query: text stays text, anything else receives the number.
void GiveValue(const ParReg& reg, Variant& vp) {
    if (vp.isText()) {
        vp = reg.vtx;
    } else {
        vp = reg.vl;
    }
}

}  // namespace

void TdaOpc::MemLpz() {
    memTab.assign(1, ParReg{});
    idxNom.clear();
}

void TdaOpc::MemFim() {
    MemLpz();
}

void TdaOpc::MemReg(std::int16_t& cnt, std::int16_t reg) {
    // Only the part after the first "." names the entry, so "DEF.DbgModo" is found as DBGMODO.
    std::string rest = parAct.var;
    std::string name;
    TxSepMo("PE MT", rest, ".", name);
    if (reg == 0 && name.empty()) return;
    // The counter is the caller's: -1 registers into element 0, as the table is resized to 0..cnt.
    // Below that no slot can be named, and past 32767 the 16-bit counter cannot count.
    if (cnt < -1 || cnt == INT16_MAX) return;

    ++cnt;
    const auto slot = static_cast<std::size_t>(cnt);
    memTab.resize(slot + 1);
    memTab[slot] = parAct;
    std::int16_t ok = 0;
    IdxAdd(idxNom, name, kEntryKind, cnt, ok);
}

void TdaOpc::MemIdxUsa(const Variant& op, std::int16_t& idx) {
    if (op.isText()) {
        std::int16_t tip = 0;
        IdxCon(idxNom, TxMai(op.text()), tip, idx);
        if (idx == 0) idx = -1;
        return;
    }
    // A number that no 16-bit index can hold names no entry.
    if (op.isNull() || !NumToInt16(op.number(), idx)) idx = -1;
}

void TdaOpc::MemConTxp(const Variant& op, std::string& txp) {
    std::int16_t exi = 0;
    MemConTxp(op, txp, exi);
}

void TdaOpc::MemConTxp(const Variant& op, std::string& txp, std::int16_t& exi) {
    exi = 1;
    std::int16_t idx = 0;
    MemIdxUsa(op, idx);
    if (idx < 0 || static_cast<std::size_t>(idx) >= memTab.size()) {
        exi = 0;
        txp.clear();
        return;
    }
    txp = memTab[static_cast<std::size_t>(idx)].txp;
}

void TdaOpc::MemCon(const std::string& var, Variant& vp) {
    std::int16_t exi = 0;
    std::string tpp;
    MemCon(var, vp, exi, tpp);
}

void TdaOpc::MemCon(const std::string& var, Variant& vp, std::int16_t& exi) {
    std::string tpp;
    MemCon(var, vp, exi, tpp);
}

void TdaOpc::MemCon(const std::string& var, Variant& vp, std::int16_t& exi, std::string& tpp) {
    std::int16_t tip = 0;
    std::int16_t idx = 0;
    IdxCon(idxNom, TxMai(var), tip, idx);
    if (idx == 0) idx = -1;
    std::string name;
    MemConIdx(idx, name, vp, tpp, exi);
}

void TdaOpc::MemConIdx(std::int16_t idx, std::string& var, Variant& vp) {
    std::string tpp;
    std::int16_t exi = 0;
    MemConIdx(idx, var, vp, tpp, exi);
}

void TdaOpc::MemConIdx(std::int16_t idx, std::string& var, Variant& vp, std::string& tpp) {
    std::int16_t exi = 0;
    MemConIdx(idx, var, vp, tpp, exi);
}

void TdaOpc::MemConIdx(std::int16_t idx, std::string& var, Variant& vp, std::string& tpp,
                       std::int16_t& exi) {
    exi = 1;
    if (idx >= 0 && static_cast<std::size_t>(idx) < memTab.size()) {
        const ParReg& reg = memTab[static_cast<std::size_t>(idx)];
        tpp = reg.tpp;
        var = reg.var;
        GiveValue(reg, vp);
        return;
    }
    exi = 0;
    tpp.clear();
    var.clear();
    VarVaz(vp);
}

void TdaOpc::MemOpcPrp(const std::string& txo, std::int16_t exi) {
    // Text set by program code is decoded whatever the special options of the zone say.
    std::string text = txo;
    TxCnvChr(text);
    SetCurrent(std::move(text), exi);
}

void TdaOpc::MemOpcReg(const std::string& ide, const Variant& vop) {
    ParReg reg;
    reg.var = ide;
    VlTx(vop, reg.vtx);
    reg.vl = NumRead(reg.vtx);
    parAct = std::move(reg);
    // Appended after the last entry; a released table counts as empty.
    const std::size_t last = memTab.empty() ? 0 : memTab.size() - 1;
    auto k = static_cast<std::int16_t>(std::min<std::size_t>(last, INT16_MAX));
    MemReg(k, 0);
}

}  // namespace lumbra
