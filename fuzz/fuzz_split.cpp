// The splitting procedures on any text. The first byte of the input chooses the separator (and
// the delimiter pair), the rest is the text. Besides never failing, each cut must give back pieces
// that are parts of the text, counts that match what was stored, and positions inside the text.

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "util/files/text_files.h"
#include "util/text/split.h"

namespace {

void Check(bool holds) {
    if (!holds) __builtin_trap();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0) return 0;
    const std::string sep(1, static_cast<char>(data[0]));
    const std::string pair = sep + static_cast<char>(data[0] + 1);
    const std::string tx(reinterpret_cast<const char*>(data) + 1, size - 1);

    std::string rest = tx;
    std::string pt;
    std::int16_t ok = 0;
    lumbra::TxSep(rest, sep, pt, ok);
    Check(ok == 1 ? pt.size() + 1 + rest.size() == tx.size() : pt == tx && rest.empty());

    for (const char* mode : {"PS", "PE", "PE T", "PE MT", "SE T", "RS"}) {
        std::string t = tx;
        lumbra::TxSepMo(mode, t, sep, pt);
        Check(t.size() + pt.size() <= tx.size());
    }

    std::vector<std::string> arr;
    std::int16_t n = -1;
    lumbra::TxArr(tx, sep, arr, n);
    Check(n >= 0 && arr.size() == static_cast<std::size_t>(n) + 1 && arr[0].empty());

    std::string bef;
    std::string inn;
    std::string aft;
    std::int16_t lng = -1;
    lumbra::TxDlm(tx, bef, inn, aft, lng, pair);
    Check(lng >= 0 &&
          (lng == 0 ? bef == tx
                    : bef.size() + static_cast<std::size_t>(lng) + aft.size() == tx.size()));

    for (std::int16_t from : {std::int16_t{1}, static_cast<std::int16_t>(tx.size() / 2 + 1)}) {
        std::int16_t p1 = from;
        std::int16_t p2 = 0;
        lumbra::TxBlk(tx, p1, p2, pair);
        Check(p1 == 0 ? p2 == 0
                      : p1 >= from && p2 > p1 && static_cast<std::size_t>(p2) <= tx.size());
    }

    for (std::int16_t mo = 0; mo <= 3; ++mo) {
        std::string sai;
        lumbra::TxLpz(mo, tx, pair, sai);
        Check(sai.size() <= tx.size());
    }

    lumbra::TxCmdArr(tx, n);
    Check(n >= 0 && lumbra::TxCmdArg().size() == static_cast<std::size_t>(n) + 1);

    // The folders along a path, which folder creation walks: one at most for each piece, and the
    // walk stops at the first folder longer than its bound. Each folder repeats the ones before
    // it, so the walk costs the square of the bound: a small one keeps each input cheap.
    constexpr std::size_t kBound = 64;
    const std::vector<std::string> folders = lumbra::FoldersAlong(tx, kBound);
    Check(folders.size() <= tx.size() + 1);
    for (std::size_t i = 0; i + 1 < folders.size(); ++i)
        Check(folders[i].size() <= kBound);
    return 0;
}
