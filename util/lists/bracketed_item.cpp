#include "util/lists/bracketed_item.h"

#include <cstddef>
#include <cstdint>
#include <utility>

#include "util/lists/typed_value.h"
#include "util/text/chars.h"
#include "util/text/split.h"

namespace lumbra {

namespace {

template <class Target>
void valueInto(const std::string& tx, const std::string& key, Target& vop, std::int16_t& ok) {
    std::string val;
    ChvVal(tx, key, val, ok);
    if (ok == 1) VarAtr("", Variant(val), vop);
}

}  // namespace

void ChvMrc(const std::string& key, std::string& mrc, std::int16_t& len) {
    mrc = "[" + UpperCase(key) + "=";
    // A marker whose length no 16-bit integer holds is refused: "" and 0.
    if (mrc.size() > INT16_MAX) mrc.clear();
    len = static_cast<std::int16_t>(mrc.size());
}

void ChvExt(const std::string& tx, const std::string& key, std::string& bef, std::string& val,
            std::string& aft, std::int16_t& ok) {
    std::string mrc;
    std::int16_t len = 0;
    ChvMrc(key, mrc, len);
    const std::size_t found = mrc.empty() ? std::string::npos : tx.find(mrc);
    // Positions are 16-bit: an item beyond them is out of reach, as for every text procedure.
    std::int16_t open = 0;
    std::int16_t close = 0;
    if (found != std::string::npos && found < INT16_MAX) {
        open = static_cast<std::int16_t>(found + 1);
        TxBlk(tx, open, close, "[]");
    }
    // 1-based positions: the item's "[" at open, its "]" at close. A "]" inside the key itself
    // closes no item.
    const auto start = static_cast<std::size_t>(open) - 1;
    const auto end = static_cast<std::size_t>(close) - 1;
    const std::size_t valueStart = start + mrc.size();
    if (close == 0 || end < valueStart) {
        ok = 0;
        bef = tx;
        val.clear();
        aft.clear();
        return;
    }
    std::string before = tx.substr(0, start);
    std::string value = tx.substr(valueStart, end - valueStart);
    std::string after = tx.substr(end + 1);
    bef = std::move(before);
    val = std::move(value);
    aft = std::move(after);
    ok = 1;
}

void ChvVal(const std::string& tx, const std::string& key, std::string& val, std::int16_t& ok) {
    std::string bef;
    std::string aft;
    ChvExt(tx, key, bef, val, aft, ok);
}

void ChvValTip(const std::string& tx, const std::string& key, Variant& vop, std::int16_t& ok) {
    valueInto(tx, key, vop, ok);
}

void ChvValTip(const std::string& tx, const std::string& key, std::string& vop, std::int16_t& ok) {
    valueInto(tx, key, vop, ok);
}

void ChvValTip(const std::string& tx, const std::string& key, double& vop, std::int16_t& ok) {
    valueInto(tx, key, vop, ok);
}

void ChvValTip(const std::string& tx, const std::string& key, std::int16_t& vop, std::int16_t& ok) {
    valueInto(tx, key, vop, ok);
}

}  // namespace lumbra
