// The one numeric reading of text, and the conversions that follow it into 16 and 32 bits: any
// text reads as some number, and a conversion either refuses it or gives a value in range.

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "util/text/numeric.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view tx(reinterpret_cast<const char*>(data), size);
    const double d = lumbra::NumRead(tx);
    if (std::isnan(d)) __builtin_trap();

    std::int16_t n16 = 0;
    if (lumbra::NumToInt16(d, n16) && std::fabs(static_cast<double>(n16) - d) > 0.5) {
        __builtin_trap();
    }
    std::int32_t n32 = 0;
    if (lumbra::NumToInt32(d, n32) && std::fabs(static_cast<double>(n32) - d) > 0.5) {
        __builtin_trap();
    }
    // The text the program writes for a number reads back as that number, to its 15 digits.
    const double back = lumbra::NumRead(lumbra::NumTx(d));
    if (std::fabs(back - d) > 1e-14 * std::fabs(d)) __builtin_trap();
    return 0;
}
