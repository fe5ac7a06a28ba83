#include "util/text/literal.h"

#include <cstddef>
#include <string_view>
#include <utility>

#include "util/text/numeric.h"
#include "util/text/split.h"

namespace lumbra {

namespace {

constexpr std::string_view kChrMarker = "chr$(";
constexpr std::string_view kBinMarker = "bin$(";

// Appends the characters of one code list. code carries the last code stored, so that a field
// too large for a 16-bit integer repeats it.
void AppendCodes(std::string_view list, std::int16_t& code, std::string& out) {
    while (!list.empty()) {
        const std::size_t comma = list.find(',');
        const std::string_view field = list.substr(0, comma);
        list.remove_prefix(comma == std::string_view::npos ? list.size() : comma + 1);
        double value = 0.0;
        std::int16_t n = 0;
        if (NumRead(field, value) && NumToInt16(value, n)) code = n;
        if (code >= 0 && code <= 255) out.push_back(static_cast<char>(code));
    }
}

// The decoder looks for one marker only, with every "chr$(" turned into "bin$(" first. That turn
// matters only inside a code list ("&H1chr$(" reads &H1B there), so it is made for the few lists
// that hold a marker instead of for the whole text.
void AppendList(std::string_view inside, std::string& out) {
    std::int16_t code = 0;
    if (inside.find(kChrMarker) == std::string_view::npos) {
        AppendCodes(inside, code, out);
        return;
    }
    std::string turned(inside);
    for (std::size_t p = turned.find(kChrMarker); p != std::string::npos;
         p = turned.find(kChrMarker, p + kBinMarker.size())) {
        turned.replace(p, kChrMarker.size(), kBinMarker);
    }
    AppendCodes(turned, code, out);
}

// The first "chr$(" or "bin$(" at or after from.
std::size_t FindMarker(std::string_view tx, std::size_t from) {
    for (std::size_t p = tx.find("$(", from); p != std::string_view::npos;
         p = tx.find("$(", p + 1)) {
        if (p < from + 3) continue;
        const std::string_view word = tx.substr(p - 3, 3);
        if (word == "chr" || word == "bin") return p - 3;
    }
    return std::string_view::npos;
}

std::string Decode(std::string_view tx) {
    std::string out;
    out.reserve(tx.size());
    std::size_t pos = 0;
    while (pos < tx.size()) {
        const std::size_t marker = FindMarker(tx, pos);
        if (marker == std::string_view::npos) {
            out.append(tx.substr(pos));
            break;
        }
        out.append(tx.substr(pos, marker - pos));
        const std::size_t listStart = marker + kBinMarker.size();
        const std::size_t close = tx.find(')', listStart);
        const std::size_t listEnd = close == std::string_view::npos ? tx.size() : close;
        AppendList(tx.substr(listStart, listEnd - listStart), out);
        pos = close == std::string_view::npos ? tx.size() : close + 1;
    }
    return out;
}

template <class Target>
void NumSepInto(std::string& tx, const std::string& sep, Target& n) {
    std::string pt;
    TxSepS(tx, sep, pt);
    double value = 0.0;
    if (NumRead(pt, value)) NumAssign(value, n);
}

}  // namespace

void TxCnvChr(std::string& tx) {
    tx = Decode(tx);
}

void TxCnvChr(const std::string& tx, Variant& sai) {
    sai = Variant(Decode(tx));
}

void TxCnvChr(const std::string& tx, std::string& sai) {
    sai = Decode(tx);
}

void TxSub(const std::string& modo, std::string& tx, const std::string& ant,
           const std::string& nov) {
    if (ant.empty() || nov.find(ant) != std::string::npos) return;
    const bool all = modo == "R";
    std::size_t from = 0;
    for (std::size_t p = tx.find(ant, from); p != std::string::npos; p = tx.find(ant, from)) {
        tx.replace(p, ant.size(), nov);
        if (!all) return;
        // Nothing before the replacement held ant, but one may now straddle its start.
        from = p + 1 >= ant.size() ? p + 1 - ant.size() : 0;
    }
}

void TxSepL(std::string& tx, const std::string& sep, std::string& pt) {
    const std::size_t p = sep.empty() ? std::string::npos : tx.find(sep);
    if (p == std::string::npos) {
        pt = tx;
        tx.clear();
        return;
    }
    std::string before = tx.substr(0, p);
    tx.erase(0, p + sep.size());
    pt = std::move(before);
}

std::string TxChrLst(const std::vector<Variant>& lst) {
    std::string out;
    std::int16_t code = 0;
    for (const Variant& element : lst) {
        if (element.isText()) {
            AppendCodes(element.text(), code, out);
        } else if (element.isNumber()) {
            std::int32_t n = 0;
            if (NumToInt32(element.number(), n) && n >= 0 && n <= 255) {
                out.push_back(static_cast<char>(n));
            }
        }
    }
    return out;
}

void TxNumSep(std::string& tx, const std::string& sep, Variant& n) {
    NumSepInto(tx, sep, n);
}
void TxNumSep(std::string& tx, const std::string& sep, std::int16_t& n) {
    NumSepInto(tx, sep, n);
}
void TxNumSep(std::string& tx, const std::string& sep, std::int32_t& n) {
    NumSepInto(tx, sep, n);
}
void TxNumSep(std::string& tx, const std::string& sep, double& n) {
    NumSepInto(tx, sep, n);
}

}  // namespace lumbra
