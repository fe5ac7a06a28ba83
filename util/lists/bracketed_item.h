#pragma once
// Bracketed items: "[" + key + "=" + value + "]" inside a text, as zone headers carry their
// special options ("[CNVCHR=0]"). The key is looked for in upper case and the text is searched
// exactly, so the text must hold the key in capitals. The value ends at the "]" that closes the
// item's "[", so it may hold bracket groups one level deep: [A=x[1]y] has the value x[1]y.

#include <cstdint>
#include <string>

#include "util/text/variant.h"

namespace lumbra {

// mrc = "[" + the key in upper case + "=", len = its length.
void ChvMrc(const std::string& key, std::string& mrc, std::int16_t& len);

// Splits tx around the first item of `key`: bef = the text before its "[", val = its value,
// aft = the text after its "]", ok = 1. Without such an item, or without its closing "]":
// bef = tx, val = aft = "", ok = 0.
void ChvExt(const std::string& tx, const std::string& key, std::string& bef, std::string& val,
            std::string& aft, std::int16_t& ok);

// The value of the item of `key` only ("" and ok = 0 without one).
void ChvVal(const std::string& tx, const std::string& key, std::string& val, std::int16_t& ok);

// The value of the item of `key` written into vop by the typed transfer (VarAtr without options):
// a text vop receives the text, any other the number read from it. Without such an item, ok = 0
// and vop keeps what it held.
void ChvValTip(const std::string& tx, const std::string& key, Variant& vop, std::int16_t& ok);
void ChvValTip(const std::string& tx, const std::string& key, std::string& vop, std::int16_t& ok);
void ChvValTip(const std::string& tx, const std::string& key, double& vop, std::int16_t& ok);
void ChvValTip(const std::string& tx, const std::string& key, std::int16_t& vop, std::int16_t& ok);

}  // namespace lumbra
