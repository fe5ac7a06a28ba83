#include "util/text/split.h"

#include <cstddef>
#include <string_view>
#include <utility>

#include "util/text/chars.h"

namespace lumbra {

namespace {

constexpr auto npos = std::string_view::npos;

// Where the plain cut falls: the first sep, where an empty sep is found at the first character of
// a non-empty text.
std::size_t CutPoint(std::string_view tx, std::string_view sep) {
    if (tx.empty()) return npos;
    return tx.find(sep);
}

// Results of the plain cut, before they are stored into the caller's variables.
struct Cut {
    std::string before;
    std::string after;
    bool found = false;
};

Cut CutAt(std::string_view tx, std::string_view sep) {
    const std::size_t p = CutPoint(tx, sep);
    if (p == npos) return {std::string(tx), std::string(), false};
    return {std::string(tx.substr(0, p)), std::string(tx.substr(p + 1)), true};
}

// 1-based positions and counts travel in 16-bit integers: whatever lies past 32767 cannot be
// named, and a procedure that would have to name it answers as if nothing were there.
constexpr std::size_t kMaxPosition = INT16_MAX;

bool Nameable(std::size_t index) {
    return index != npos && index < kMaxPosition;
}

std::int16_t Position(std::size_t index) {
    return static_cast<std::int16_t>(index + 1);
}

// The block from the first open to the first close at or after it, with its length; 0 when
// there is none, or when it is longer than maxLength.
std::size_t Block(std::string_view tx, std::string_view dl, std::size_t closeIndex,
                  std::size_t maxLength, std::string& bef, std::string& inn, std::string& aft) {
    std::size_t p1 = npos;
    std::size_t p2 = npos;
    if (dl.size() > closeIndex) {
        p1 = tx.find(dl.front());
        if (p1 != npos) p2 = tx.find(dl[closeIndex], p1);
    }
    if (p2 == npos || p2 - p1 + 1 > maxLength) {
        std::string whole(tx);
        bef = std::move(whole);
        inn.clear();
        aft.clear();
        return 0;
    }
    std::string before(tx.substr(0, p1));
    std::string inside(p2 > p1 ? tx.substr(p1 + 1, p2 - p1 - 1) : std::string_view());
    std::string after(tx.substr(p2 + 1));
    bef = std::move(before);
    inn = std::move(inside);
    aft = std::move(after);
    return p2 - p1 + 1;
}

std::vector<std::string>& CommandWords() {
    static std::vector<std::string> words(1);
    return words;
}

}  // namespace

void TxSep(std::string& tx, const std::string& sep, std::string& pt, std::int16_t& ok) {
    Cut cut = CutAt(tx, sep);
    ok = cut.found ? 1 : 0;
    tx = std::move(cut.after);
    pt = std::move(cut.before);
}

void TxSepS(std::string& tx, const std::string& sep, std::string& pt) {
    std::int16_t ok = 0;
    TxSep(tx, sep, pt, ok);
}

void TxSep2(const std::string& tx, const std::string& sep, std::string& pt1, std::string& pt2,
            std::int16_t& ok) {
    Cut cut = CutAt(tx, sep);
    ok = cut.found ? 1 : 0;
    pt1 = std::move(cut.before);
    pt2 = std::move(cut.after);
}

void TxSepC(const std::string& tx, const std::string& sep, std::string& pt, std::string& rest) {
    Cut cut = CutAt(tx, sep);
    pt = std::move(cut.before);
    rest = std::move(cut.after);
}

void TxSepMo(const std::string& mo, std::string& tx, const std::string& sep, std::string& pt) {
    const Cut mode = CutAt(mo, " ");
    const std::string& kind = mode.before;
    const std::string& flags = mode.after;
    const std::string whole = tx;
    Cut cut = CutAt(whole, sep);

    std::string newTx;
    std::string newPt;
    if (kind == "PS") {
        newTx = cut.found ? cut.after : whole;
        newPt = cut.found ? cut.before : std::string();
    } else if (kind == "PE") {
        newTx = cut.found ? cut.before : std::string();
        newPt = cut.found ? cut.after : whole;
    } else if (kind == "SE" || kind == "RS") {
        newTx = cut.found ? cut.before : whole;
        newPt = cut.found ? cut.after : std::string();
    } else {
        newTx = cut.found ? cut.after : std::string();
        newPt = cut.found ? cut.before : whole;
    }
    if (flags.find('M') != std::string::npos) {
        newTx = UpperCase(newTx);
        newPt = UpperCase(newPt);
    }
    if (flags.find('T') != std::string::npos) {
        newTx = std::string(TrimBlanks(newTx));
        newPt = std::string(TrimBlanks(newPt));
    }
    tx = std::move(newTx);
    pt = std::move(newPt);
}

void TxArr(const std::string& tx, const std::string& sep, std::vector<std::string>& arr,
           std::int16_t& n) {
    std::vector<std::string> fields(1);
    std::string_view w = tx;
    while (!w.empty() && fields.size() - 1 <= kMaxPosition) {
        const std::size_t p = CutPoint(w, sep);
        if (p == npos) {
            fields.emplace_back(w);
            break;
        }
        fields.emplace_back(w.substr(0, p));
        w.remove_prefix(p + 1);
    }
    // More fields than a 16-bit count can hold: the text is refused as a whole rather than cut,
    // so that no caller walks a part of it as if it were all.
    if (fields.size() - 1 > kMaxPosition) fields.assign(1, std::string());
    n = static_cast<std::int16_t>(fields.size() - 1);
    arr = std::move(fields);
}

void TxDlm(const std::string& tx, std::string& bef, std::string& inn, std::string& aft,
           std::int16_t& lng, const std::string& dl) {
    const std::size_t closeIndex = dl.empty() ? 0 : dl.size() - 1;
    // A block whose length no 16-bit integer holds is not a block.
    const std::size_t length = Block(tx, dl, closeIndex, kMaxPosition, bef, inn, aft);
    lng = static_cast<std::int16_t>(length);
}

void TxDlm2(const std::string& tx, const std::string& dl, std::string& bef, std::string& inn,
            std::string& aft) {
    Block(tx, dl, 1, npos, bef, inn, aft);
}

void TxBlk(const std::string& tx, std::int16_t& p1, std::int16_t& p2, const std::string& dl) {
    const std::string_view d = dl.empty() ? std::string_view("\"\"") : std::string_view(dl);
    const char open = d.front();
    const char close = d.size() > 1 ? d[1] : d.front();
    const std::size_t start = p1 < 1 ? 0 : static_cast<std::size_t>(p1 - 1);
    const std::size_t q = start < tx.size() ? tx.find(open, start) : npos;
    if (q == npos) {
        p1 = 0;
        p2 = 0;
        return;
    }
    // An inner block that opens before the close just found pushes the close further on.
    std::size_t k = q;
    std::size_t innerOpen = npos;
    do {
        innerOpen = tx.find(open, k + 1);
        k = tx.find(close, k + 1);
    } while (innerOpen != npos && k != npos && innerOpen < k);
    if (!Nameable(q) || !Nameable(k)) {
        p1 = 0;
        p2 = 0;
        return;
    }
    p1 = Position(q);
    p2 = Position(k);
}

void TxLpz(std::int16_t mo, const std::string& tx, const std::string& chs, std::string& sai) {
    std::string_view r = tx;
    if (mo == 0) {
        std::string kept;
        kept.reserve(tx.size());
        for (const char c : tx) {
            if (chs.find(c) == std::string::npos) kept.push_back(c);
        }
        sai = std::move(kept);
        return;
    }
    if (mo == 1 || mo == 3) {
        const std::size_t first = r.find_first_not_of(chs);
        r.remove_prefix(first == npos ? r.size() : first);
    }
    if (mo == 2 || mo == 3) {
        const std::size_t last = r.find_last_not_of(chs);
        r.remove_suffix(last == npos ? r.size() : r.size() - last - 1);
    }
    sai = std::string(r);
}

void TxCmdArr(const std::string& cmd, std::int16_t& n) {
    std::vector<std::string> words{cmd};
    std::string_view rest = cmd;
    // Words past the 16-bit count cannot be asked for; they are not kept.
    while (!rest.empty() && words.size() <= kMaxPosition) {
        const std::size_t first = rest.find_first_not_of(' ');
        if (first == npos) break;
        rest.remove_prefix(first);
        const std::size_t end = rest.find(' ');
        words.emplace_back(rest.substr(0, end));
        rest.remove_prefix(end == npos ? rest.size() : end);
    }
    n = static_cast<std::int16_t>(words.size() - 1);
    CommandWords() = std::move(words);
}

const std::vector<std::string>& TxCmdArg() {
    return CommandWords();
}

}  // namespace lumbra
