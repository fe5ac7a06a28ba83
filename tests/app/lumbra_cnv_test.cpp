// The base conversion of the window's two boxes: the other box's text for what was typed.

#include "app/LumbraCnv.h"

#include <gtest/gtest.h>

#include <string>

namespace lumbra {
namespace {

struct Case {
    std::string in, out;
};

// clang-format off
const Case kDecToHex[] = {
    {"255", "FF"}, {"-1", "FFFFFFFF"}, {" \t42  ", "2A"},
    // Halves go to the even neighbour.
    {"2.5", "2"}, {"3.5", "4"}, {"25E-1", "2"}, {"1E+1", "A"},
    // The signed 32-bit range, after rounding.
    {"2147483647.49", "7FFFFFFF"}, {"2147483647.5", "Erro"},
    // Anything but one whole number.
    {"", "Erro"}, {"12abc", "Erro"}, {"1 2", "Erro"}, {"1,5", "Erro"}};

const Case kHexToDec[] = {
    {"ff", "255"}, {"0", "0"},
    // Up to FFFF the value is 16-bit two's complement, leading zeros not counted.
    {"7FFF", "32767"}, {"8000", "-32768"}, {"0000FFFF", "-1"},
    // Up to FFFFFFFF it is 32-bit two's complement.
    {"10000", "65536"}, {"80000000", "-2147483648"}, {"FFFFFFFF", "-1"},
    // More than 32 bits of value.
    {"100000000", "Erro"},
    // The reading stops at the first other character, and no digit is 0.
    {"1G", "1"}, {"", "0"}};
// clang-format on

TEST(LumbraCnv, EachBoxAnswersTheOtherBasesTextOrErro) {
    for (const auto& c : kDecToHex) {
        std::string hx = "stale";
        CnvDecHex(c.in, hx);
        EXPECT_EQ(hx, c.out) << "decimal \"" << c.in << "\"";
    }
    for (const auto& c : kHexToDec) {
        std::string tx = "stale";
        CnvHexDec(c.in, tx);
        EXPECT_EQ(tx, c.out) << "hexadecimal \"" << c.in << "\"";
    }
}

}  // namespace
}  // namespace lumbra
