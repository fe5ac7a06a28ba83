// The literal decoder on any text: it never fails, and since every notation is longer than the
// characters it stands for, what it gives is never longer than what it was given.

#include <cstddef>
#include <cstdint>
#include <string>

#include "util/text/literal.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string tx(reinterpret_cast<const char*>(data), size);
    std::string decoded;
    lumbra::TxCnvChr(tx, decoded);
    if (decoded.size() > tx.size()) __builtin_trap();

    // In place, the same result.
    std::string inPlace = tx;
    lumbra::TxCnvChr(inPlace);
    if (inPlace != decoded) __builtin_trap();
    return 0;
}
