#include "util/text/numeric.h"

#include <array>
#include <charconv>
#include <cmath>
#include <cstddef>
#include <locale>
#include <utility>

namespace lumbra {

namespace {

// Walks the text, stepping over the characters the reading ignores.
class Cursor {
  public:
    explicit Cursor(std::string_view tx) : p_(tx.data()), end_(tx.data() + tx.size()) {}

    // The next character that counts, or -1 at the end; it stays current until take().
    int peek() {
        while (p_ != end_ && (*p_ == ' ' || *p_ == '\t' || *p_ == '\n'))
            ++p_;
        return p_ == end_ ? -1 : static_cast<unsigned char>(*p_);
    }
    void take() { ++p_; }

  private:
    const char* p_;
    const char* end_;
};

int DigitValue(int c) {
    if (c >= '0' && c <= '9') return c - '0';
    if (c >= 'A' && c <= 'F') return c - 'A' + 10;
    if (c >= 'a' && c <= 'f') return c - 'a' + 10;
    return 99;
}

// "&H..." or "&O..." after the "&": the width of the result follows the value, 16 bits when it
// fits, else 32. A value that needs more than 32 bits is an overflow: false, d = 0.
bool ReadBased(Cursor& cur, double& d) {
    d = 0.0;
    int base = 0;
    const int marker = cur.peek();
    if (marker == 'H' || marker == 'h') base = 16;
    if (marker == 'O' || marker == 'o') base = 8;
    if (base == 0) return true;
    cur.take();
    std::uint64_t value = 0;
    for (;;) {
        const int digit = DigitValue(cur.peek());
        if (digit >= base) break;
        value = value * static_cast<std::uint64_t>(base) + static_cast<std::uint64_t>(digit);
        if (value > 0xFFFFFFFFu) return false;
        cur.take();
    }
    if (value <= 0xFFFFu) {
        d = static_cast<double>(static_cast<std::int16_t>(static_cast<std::uint16_t>(value)));
    } else {
        d = static_cast<double>(static_cast<std::int32_t>(static_cast<std::uint32_t>(value)));
    }
    return true;
}

// Significant digits kept from a decimal mantissa; the rest only shift the exponent. Far more than
// a double can tell apart.
constexpr std::size_t kMaxDigits = 120;
// Exponents beyond this give infinity or zero whatever the digits; clamping keeps the sums small.
constexpr long kExponentClamp = 100000;

constexpr std::array<double, 23> kPowersOfTen = {1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                                                 1e8,  1e9,  1e10, 1e11, 1e12, 1e13, 1e14, 1e15,
                                                 1e16, 1e17, 1e18, 1e19, 1e20, 1e21, 1e22};

// Decimal digits, "." and exponent after the sign. The digits are gathered without leading zeros
// as an integer D and a power of ten E, value = D * 10^E; small cases are computed exactly, the
// others handed to from_chars, which never looks at the locale.
bool ReadDecimal(Cursor& cur, double& magnitude) {
    std::array<char, kMaxDigits + 16> buf{};
    std::size_t count = 0;
    long shift = 0;
    bool anyDigit = false;
    bool seenPoint = false;
    std::uint64_t small = 0;
    for (;;) {
        const int c = cur.peek();
        if (c >= '0' && c <= '9') {
            anyDigit = true;
            cur.take();
            if (count == 0 && c == '0') {
                if (seenPoint) --shift;
                continue;
            }
            if (count < kMaxDigits) {
                buf[count++] = static_cast<char>(c);
                if (count <= 19) small = small * 10 + static_cast<std::uint64_t>(c - '0');
                if (seenPoint) --shift;
            } else if (!seenPoint) {
                ++shift;
            }
        } else if (c == '.' && !seenPoint) {
            seenPoint = true;
            cur.take();
        } else {
            break;
        }
    }
    magnitude = 0.0;
    if (!anyDigit) return true;

    const int marker = cur.peek();
    if (marker == 'E' || marker == 'e' || marker == 'D' || marker == 'd') {
        cur.take();
        bool negative = false;
        const int sign = cur.peek();
        if (sign == '+' || sign == '-') {
            negative = sign == '-';
            cur.take();
        }
        long exponent = 0;
        for (int c = cur.peek(); c >= '0' && c <= '9'; c = cur.peek()) {
            if (exponent < kExponentClamp) exponent = exponent * 10 + (c - '0');
            cur.take();
        }
        shift += negative ? -exponent : exponent;
    }
    if (count == 0) return true;

    if (count <= 15 && shift >= -22 && shift <= 22) {
        // Both factors are exact doubles, so one operation rounds correctly.
        const auto whole = static_cast<double>(small);
        const auto power = kPowersOfTen[static_cast<std::size_t>(shift < 0 ? -shift : shift)];
        magnitude = shift < 0 ? whole / power : whole * power;
        return true;
    }
    if (shift > kExponentClamp) shift = kExponentClamp;
    if (shift < -kExponentClamp) shift = -kExponentClamp;
    char* const end = buf.data() + buf.size();
    char* p = buf.data() + count;
    *p++ = 'e';
    p = std::to_chars(p, end, shift).ptr;
    const auto result = std::from_chars(buf.data(), p, magnitude, std::chars_format::scientific);
    if (result.ec == std::errc::result_out_of_range) {
        magnitude = 0.0;
        // Too small reads as zero; too large is a failure.
        return static_cast<long>(count) + shift <= 0;
    }
    return true;
}

std::string FormatGeneral(double d) {
    std::array<char, 40> buf{};
    const auto result =
        std::to_chars(buf.data(), buf.data() + buf.size(), d, std::chars_format::general, 15);
    std::string out(buf.data(), result.ptr);
    for (char& c : out) {
        if (c == 'e') c = 'E';
    }
    return out;
}

bool RoundHalfEven(double d, double& r) {
    if (!std::isfinite(d)) return false;
    double whole = std::floor(d);
    const double fraction = d - whole;
    if (fraction > 0.5 || (fraction == 0.5 && std::fmod(whole, 2.0) != 0.0)) whole += 1.0;
    r = whole;
    return true;
}

}  // namespace

bool NumRead(std::string_view tx, double& d) {
    Cursor cur(tx);
    d = 0.0;
    const int first = cur.peek();
    if (first == '&') {
        cur.take();
        return ReadBased(cur, d);
    }
    bool negative = false;
    if (first == '+' || first == '-') {
        negative = first == '-';
        cur.take();
    }
    double magnitude = 0.0;
    if (!ReadDecimal(cur, magnitude)) return false;
    // A zero is always the plain zero, so that "-0" never shows as "-0".
    if (magnitude != 0.0) d = negative ? -magnitude : magnitude;
    return true;
}

double NumRead(std::string_view tx) {
    double d = 0.0;
    NumRead(tx, d);
    return d;
}

bool NumToInt16(double d, std::int16_t& n) {
    double r = 0.0;
    if (!RoundHalfEven(d, r) || r < -32768.0 || r > 32767.0) return false;
    n = static_cast<std::int16_t>(r);
    return true;
}

bool NumToInt32(double d, std::int32_t& n) {
    double r = 0.0;
    if (!RoundHalfEven(d, r) || r < -2147483648.0 || r > 2147483647.0) return false;
    n = static_cast<std::int32_t>(r);
    return true;
}

std::string NumTx(double d) {
    if (!std::isfinite(d)) return "";
    if (d == 0.0) return "0";
    std::string out = FormatGeneral(d);
    if (out.starts_with("0.")) out.erase(0, 1);
    if (out.starts_with("-0.")) out.erase(1, 1);
    return out;
}

std::string NumTxRegional(double d) {
    if (!std::isfinite(d)) return "";
    if (d == 0.0) return "0";
    std::string out = FormatGeneral(d);
    const char point = std::use_facet<std::numpunct<char>>(std::locale()).decimal_point();
    for (char& c : out) {
        if (c == '.') c = point;
    }
    return out;
}

bool NumAssign(double d, std::int16_t& target) {
    return NumToInt16(d, target);
}

bool NumAssign(double d, std::int32_t& target) {
    return NumToInt32(d, target);
}

bool NumAssign(double d, double& target) {
    if (!std::isfinite(d)) return false;
    target = d;
    return true;
}

bool NumAssign(double d, std::string& target) {
    if (!std::isfinite(d)) return false;
    target = NumTxRegional(d);
    return true;
}

bool NumAssign(double d, Variant& target) {
    switch (target.kind()) {
        case Variant::Kind::Int16: {
            std::int16_t n = 0;
            if (!NumToInt16(d, n)) return false;
            target = Variant(n);
            return true;
        }
        case Variant::Kind::Int32: {
            std::int32_t n = 0;
            if (!NumToInt32(d, n)) return false;
            target = Variant(n);
            return true;
        }
        case Variant::Kind::Text: {
            std::string text;
            if (!NumAssign(d, text)) return false;
            target = Variant(std::move(text));
            return true;
        }
        default: {
            if (!std::isfinite(d)) return false;
            target = Variant(d);
            return true;
        }
    }
}

void ZeroOfKind(Variant& target) {
    switch (target.kind()) {
        case Variant::Kind::Int16:
            target = Variant(std::int16_t{0});
            break;
        case Variant::Kind::Int32:
            target = Variant(std::int32_t{0});
            break;
        case Variant::Kind::Text:
            target = Variant(std::string());
            break;
        default:
            target = Variant(0.0);
            break;
    }
}

}  // namespace lumbra
