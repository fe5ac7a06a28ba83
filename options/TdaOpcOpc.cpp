// Options: named text values queried by key. "APP:PATH" is the program's folder, keys from "LC:"
// to "LC:z" are answered from the command line, any other key from the option list that the last
// DEF zone built. Values may refer to other options as [KEY]; those references are replaced on
// request. The option table, built from an OPC zone, is walked by name prefix.

#include "options/TdaOpc.h"
#include "platform/program.h"
#include "util/lists/comma_list.h"
#include "util/lists/keyed_list.h"
#include "util/lists/typed_value.h"
#include "util/text/split.h"
#include "util/text/value.h"

namespace lumbra {

namespace {

// A value replaced by a value is scanned again; this many passes end a chain that refers to
// itself.
constexpr int kMaxReferencePasses = 21;

// The first reference of t: the text before its "[", the key inside, the text after its "]".
// Without a closed reference, or with "[]", the key is "".
struct Reference {
    std::string before;
    std::string key;
    std::string after;
};

Reference FirstReference(const std::string& t) {
    Reference r;
    TxDlm2(t, "[]", r.before, r.key, r.after);
    return r;
}

}  // namespace

void TdaOpc::OpcIni(const std::string& mo) {
    if (mo == "A") {
        LstIni(opcLin);
    } else {
        opcLin.assign(1, std::string());
    }
    optionPositions.Reset(opcLin);
}

void TdaOpc::OpcPrp(std::int16_t cnt) {
    ZonArrLst("IDE", cnt, opcLin, optionPositions);
}

void TdaOpc::OpcArr(std::int16_t cnt, std::vector<std::string>& tx) {
    std::vector<std::string> lst;
    KeyedListIndex positions;
    ZonArrLst("IDE", cnt, lst, positions);
    // Names that repeat leave fewer values than records; the slots past them stay empty.
    std::vector<std::string> values(static_cast<std::size_t>(cnt > 0 ? cnt : 0) + 1);
    for (std::size_t i = 1; i < values.size() && i + 1 < lst.size(); ++i)
        values[i] = lst[i + 1];
    tx = std::move(values);
}

std::string TdaOpc::OptionValue(const std::string& chv) {
    const std::string k = TxMai(chv);
    if (k == "APP:PATH") return platform::ProgramFolder();
    // Every key of "LC:" and a switch name in capitals and digits sorts in this range.
    if (k >= "LC:" && k <= "LC:z") {
        Variant value = std::string();
        std::int16_t ok = 0;
        LcCon(Variant("-" + k.substr(3)), value, ok);
        return value.text();
    }
    std::string value;
    std::int16_t pos = 0;
    optionPositions.Con(opcLin, k, value, pos);
    return value;
}

void TdaOpc::OpcCon(const std::string& chv, Variant& vop) {
    VarAtr("", Variant(OptionValue(chv)), vop);
}

void TdaOpc::OpcCon(const std::string& chv, std::string& vop) {
    vop = OptionValue(chv);
}

void TdaOpc::OpcAct(const std::string& chv, const Variant& vop) {
    std::string text;
    VarAtr("", vop, text);
    std::int16_t pos = 0;
    optionPositions.Reg(opcLin, TxMai(chv), text, pos);
}

std::string TdaOpc::Substituted(std::string t) {
    Reference r = FirstReference(t);
    for (int n = 0; !r.key.empty() && n < kMaxReferencePasses; ++n) {
        t = r.before + OptionValue(r.key) + r.after;
        r = FirstReference(t);
    }
    return t;
}

void TdaOpc::OpcPath(const std::string& chv, std::string& path) {
    const std::string v = OptionValue(chv);
    const Reference r = FirstReference(v);
    path = Substituted(r.key.empty() ? v : r.before + OptionValue(r.key) + r.after);
}

void TdaOpc::OpcSbr(std::string& txo) {
    txo = Substituted(txo);
}

void TdaOpc::OpcSbr(const std::string& txo, Variant& sai) {
    sai = Substituted(txo);
}

void TdaOpc::OpcSbr(const std::string& txo, std::string& sai) {
    sai = Substituted(txo);
}

void TdaOpc::MemPath(const std::string& var, std::string& path) {
    std::int16_t exi = 0;
    std::string tpp;
    MemPath(var, path, exi, tpp);
}

void TdaOpc::MemPath(const std::string& var, std::string& path, std::int16_t& exi) {
    std::string tpp;
    MemPath(var, path, exi, tpp);
}

void TdaOpc::MemPath(const std::string& var, std::string& path, std::int16_t& exi,
                     std::string& tpp) {
    Variant v = std::string();
    MemCon(var, v, exi, tpp);
    path = Substituted(v.text());
}

void TdaOpc::OpcDbg(const Variant& chv, Variant& vop, const Variant& sn) {
    std::string name;
    VarAtr("", chv, name);
    const std::string nm = TxMai(name);
    Variant value = std::string();
    MemCon("DBG" + nm, value);
    const std::string v = TxMai(value.text());
    const std::int16_t f = v == nm ? 1 : 0;

    if (VlDbl(sn) != 1.0) {
        VarAtr("", Variant(v), vop);
        return;
    }
    if (vop.isText()) {
        // The first letter of "Sim" or "N\xE3o".
        std::string yesNo;
        VlSimNao(Variant(f), yesNo);
        vop = yesNo.substr(0, 1);
    } else {
        vop = f;
    }
}

std::int16_t TdaOpc::OpcTabPrp(const std::string& tpv) {
    // Before an OPC zone the table has no slots and nothing can be selected.
    if (opcTab.empty()) return 0;
    const std::string list = TxMai(tpv);
    std::int16_t count = 0;
    for (std::size_t i = 1; i < opcTab.size(); ++i) {
        std::string kind;
        std::string name;
        ParTipVar(opcTab[i].var, kind, name);
        std::int16_t ok = 0;
        LstPre(list, name, ok);
        opcTab[i].vl = ok;
        count = static_cast<std::int16_t>(count + ok);
    }
    // The cursor of OpcTabCon starts before the first entry.
    opcTab[0].vl = 0;
    return count;
}

void TdaOpc::OpcTabCon(std::string& txi, std::string& vop) {
    std::string tpo;
    OpcTabCon(txi, vop, tpo);
}

void TdaOpc::OpcTabCon(std::string& txi, std::string& vop, std::string& tpo) {
    txi.clear();
    vop.clear();
    tpo.clear();
    if (opcTab.empty()) return;
    const double cursor = opcTab[0].vl;
    if (!(cursor >= 0 && cursor < static_cast<double>(opcTab.size()))) return;
    for (auto i = static_cast<std::size_t>(cursor) + 1; i < opcTab.size(); ++i) {
        const ParReg& entry = opcTab[i];
        if (entry.vl != 1.0) continue;
        std::string kind;
        ParTipVar(entry.var, kind, tpo);
        txi = entry.txi;
        vop = entry.vtx;
        opcTab[0].vl = static_cast<double>(i);
        return;
    }
}

}  // namespace lumbra
