// The line syntax of parameter files: type marks, the split of an assignment line, and the reader
// that joins physical lines into logical lines.

#include <string_view>

#include "options/TdaOpc.h"
#include "util/files/text_files.h"
#include "util/text/chars.h"
#include "util/text/literal.h"
#include "util/text/numeric.h"
#include "util/text/split.h"
#include "util/text/value.h"

namespace lumbra {

namespace {

bool StartsWith(std::string_view tx, std::string_view head) {
    return tx.substr(0, head.size()) == head;
}

bool EndsWith(std::string_view tx, std::string_view tail) {
    return tx.size() >= tail.size() && tx.substr(tx.size() - tail.size()) == tail;
}

// Position (from 1) of the first "=" of tx, 0 when there is none.
std::size_t FirstEqualsPosition(std::string_view tx) {
    const std::size_t p = tx.find('=');
    return p == std::string_view::npos ? 0 : p + 1;
}

// One physical line's contribution to a logical line. A line that starts with "+" after its
// blanks is a continuation piece and is trimmed; any other line is kept as read. A trailing "<-"
// marks where the value ends (so that trailing blanks survive editors that strip them), and a
// trailing "+" asks for the next physical line.
std::string_view Piece(std::string_view line, bool& continues) {
    const std::string_view trimmed = TrimBlanks(line);
    std::string_view piece = StartsWith(trimmed, "+") ? trimmed.substr(1) : line;
    if (EndsWith(piece, "<-")) piece.remove_suffix(2);
    continues = EndsWith(piece, "+");
    if (continues) piece.remove_suffix(1);
    return piece;
}

}  // namespace

void TdaOpc::LerLin(std::int16_t& ok) {
    ok = 1;
    std::string text;

    const std::int16_t n = FicAtu();
    std::string line;
    std::int16_t err = 0;
    FicLerLin(n, line, err);
    if (err != 0) ok = 0;
    while (ok == 1) {
        bool continues = false;
        // Joined whole, however long: the splits that give 16-bit positions refuse what lies
        // beyond them.
        text.append(Piece(line, continues));
        if (!continues) break;
        FicLerLin(n, line, err);
        if (err != 0) ok = 0;
    }
    // A logical line still open when the file ended is dropped.
    if (ok != 1) text.clear();

    if (espAct == 1) TxCnvChr(text);
    SetCurrent(std::move(text), ok);
}

void TdaOpc::SetCurrent(std::string text, std::int16_t ok) {
    ParReg reg;
    ParTpp(text, reg.tpp, reg.var);
    // The record keeps the identifier as ParTpp normalised it, not as written.
    std::string ide;
    ParPrep(text, reg.txi, ide, reg.vtx, reg.ptx);
    reg.vl = NumRead(reg.vtx);
    reg.ok = ok;
    reg.txp = std::move(text);
    parAct = std::move(reg);
}

void TdaOpc::LerLinCnt(std::string& tpp, std::int16_t& ok) {
    do {
        LerLin(ok);
    } while (parAct.tpp.empty() && ok == 1);
    tpp = parAct.tpp;
}

void TdaOpc::LerLinAtr(std::int16_t& ok) {
    std::string tpp;
    do {
        LerLinCnt(tpp, ok);
    } while (tpp != "=" && ok == 1);
}

void TdaOpc::LerPar(Variant& vp) {
    std::string ide;
    LerPar(vp, ide);
}

void TdaOpc::LerPar(Variant& vp, std::string& ide) {
    std::int16_t ok = 0;
    LerLinAtr(ok);
    ide = parAct.var;
    if (vp.isText()) {
        vp = parAct.vtx;
    } else {
        vp = parAct.vl;
    }
}

void TdaOpc::ParTpp(const std::string& tx, std::string& tpp) {
    std::string var;
    ParTpp(tx, tpp, var);
}

void TdaOpc::ParTpp(const std::string& tx, std::string& tpp, std::string& var) {
    var.clear();
    const std::string_view c2 = std::string_view(tx).substr(0, 2);
    const std::string_view c1 = c2.substr(0, 1);
    tpp = "?";
    // In this order, each match overriding the one before.
    if (c1.empty()) tpp = "";
    if (c1 == "'") tpp = "'";
    if (c1 == "#") tpp = "#";
    if (c2 == "##") tpp = "##";
    if (c1 == "$") tpp = "$";
    if (c2 == "$$") tpp = "$$";

    // An assignment needs at least three characters of description before its "=", so that short
    // lines such as "a=1" stay unclassified.
    if (tpp == "?" && FirstEqualsPosition(tx) > 3) {
        tpp = "=";
        std::string before;
        std::string inside;
        std::string after;
        std::int16_t lng = 0;
        TxDlm(tx, before, inside, after, lng, "[]");
        if (lng > 0) var = TxMai(inside);
    }
}

void TdaOpc::ParTipVar(const std::string& txv, std::string& tip, std::string& var) {
    var = txv;
    TxSepMo("PS", var, ":", tip);
}

void TdaOpc::ParPrep(const std::string& txp, std::string& txi, std::string& ide, std::string& vtx,
                     std::int16_t& ptx) {
    const std::size_t p = FirstEqualsPosition(txp);
    std::string head;
    if (!StartsWith(txp, "'") && p >= 3) {
        // A position beyond the 16-bit range cannot be given: such a value has none.
        ptx = p + 1 <= static_cast<std::size_t>(INT16_MAX) ? static_cast<std::int16_t>(p + 1)
                                                           : std::int16_t{0};
        head = txp.substr(0, p - 1);
        vtx = txp.substr(p);
    } else {
        ptx = 0;
        vtx.clear();
    }

    // Without a bracket pair the whole head comes back as the text before it, and ide as "".
    std::string before;
    std::string after;
    std::int16_t lng = 0;
    TxDlm(head, before, ide, after, lng, "[]");
    txi = std::string(TrimBlanks(before));
}

}  // namespace lumbra
