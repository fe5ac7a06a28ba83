#include "app/LumbraCnv.h"

#include <cstdint>
#include <string_view>

#include "util/text/numeric.h"

namespace lumbra {
namespace {

bool IsBlank(char c) {
    return c == ' ' || c == '\t';
}
bool IsDigit(char c) {
    return c >= '0' && c <= '9';
}

std::string_view TrimSurrounding(std::string_view s) {
    while (!s.empty() && IsBlank(s.front()))
        s.remove_prefix(1);
    while (!s.empty() && IsBlank(s.back()))
        s.remove_suffix(1);
    return s;
}

// Whether s is exactly one decimal number: [+-] digits [. digits] [E [+-] digits], with digits on
// at least one side of the point. The value itself is left to NumRead, which would also accept
// "12abc" (as 12) and "1 2" (as 12); the box must answer "Erro" for those.
bool IsWholeDecimal(std::string_view s) {
    std::size_t i = 0;
    const std::size_t n = s.size();
    auto digits = [&] {
        const std::size_t start = i;
        while (i < n && IsDigit(s[i]))
            ++i;
        return i - start;
    };
    if (i < n && (s[i] == '+' || s[i] == '-')) ++i;
    std::size_t mantissa = digits();
    if (i < n && s[i] == '.') {
        ++i;
        mantissa += digits();
    }
    if (mantissa == 0) return false;
    if (i < n && (s[i] == 'E' || s[i] == 'e')) {
        ++i;
        if (i < n && (s[i] == '+' || s[i] == '-')) ++i;
        if (digits() == 0) return false;
    }
    return i == n;
}

std::string HexDigits(std::uint32_t v) {
    static constexpr char kDigits[] = "0123456789ABCDEF";
    std::string out;
    do {
        out.insert(out.begin(), kDigits[v & 0xFu]);
        v >>= 4;
    } while (v != 0);
    return out;
}

}  // namespace

void CnvDecHex(const std::string& tx, std::string& hx) {
    hx = kCnvErro;
    const std::string_view number = TrimSurrounding(tx);
    if (!IsWholeDecimal(number)) return;
    double d = 0;
    if (!NumRead(number, d)) return;
    std::int32_t n = 0;
    if (!NumToInt32(d, n)) return;
    hx = HexDigits(static_cast<std::uint32_t>(n));
}

void CnvHexDec(const std::string& hx, std::string& tx) {
    tx = kCnvErro;
    double d = 0;
    if (!NumRead("&H" + hx, d)) return;
    std::int32_t n = 0;
    if (!NumToInt32(d, n)) return;
    tx = std::to_string(n);
}

}  // namespace lumbra
