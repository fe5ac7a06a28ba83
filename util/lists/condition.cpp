#include "util/lists/condition.h"

#include <string_view>

#include "util/lists/like_pattern.h"
#include "util/text/chars.h"
#include "util/text/split.h"

namespace lumbra {

namespace {

bool inRange(const std::string& a, const std::string& range) {
    std::string low;
    std::string high;
    TxSepC(range, ":", low, high);
    return low <= a && a <= high;
}

bool occursIn(const std::string& a, const std::string& b) {
    return !b.empty() && b.find(a) != std::string::npos;
}

bool holds(const std::string& a, const std::string& op, const std::string& b) {
    if (op == "=") return a == b;
    if (op == ">") return a > b;
    if (op == "<") return a < b;
    if (op == ">=") return a >= b;
    if (op == "<=") return a <= b;
    if (op == "<>") return a != b;
    if (op == "LIKE") return likeMatches(a, b);
    if (op == ":") return inRange(a, b);
    if (op == "INSTR") return occursIn(a, b);
    return false;
}

}  // namespace

void CndAva(const std::string& a, const std::string& op, const std::string& b, std::int16_t& ok) {
    ok = holds(a, UpperCase(op), b) ? 1 : 0;
}

}  // namespace lumbra
