#pragma once
// The names of the control bytes the command sets of both virtual devices use.

#include <cstddef>
#include <string_view>

namespace lumbra::sim {

inline constexpr unsigned char kBs = 0x08;
inline constexpr unsigned char kHt = 0x09;
inline constexpr unsigned char kLf = 0x0A;
inline constexpr unsigned char kHom = 0x0B;
inline constexpr unsigned char kClr = 0x0C;
inline constexpr unsigned char kCr = 0x0D;
inline constexpr unsigned char kDle = 0x10;
inline constexpr unsigned char kDc4 = 0x14;
inline constexpr unsigned char kCan = 0x18;
inline constexpr unsigned char kEsc = 0x1B;
inline constexpr unsigned char kGs = 0x1D;
inline constexpr unsigned char kUs = 0x1F;

inline unsigned char At(std::string_view in, std::size_t i) {
    return static_cast<unsigned char>(in[i]);
}

}  // namespace lumbra::sim
