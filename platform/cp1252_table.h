#pragma once
// Windows-1252 character by character: the one table behind every crossing of the program's text
// into another form (UTF-8 for the host, UTF-16 for Qt and for the Windows API). Our own table,
// so that the result never depends on the code page of the machine the program runs on.

#include <array>
#include <cstddef>

namespace lumbra::platform {

// The characters of the bytes 0x80 to 0x9F. The five bytes Windows-1252 leaves undefined (0x81,
// 0x8D, 0x8F, 0x90, 0x9D) keep their own number, as control characters, so every byte comes back.
inline constexpr std::array<char16_t, 32> kCp1252HighControls = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,  // 0x80
    0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0x008D, 0x017D, 0x008F,  // 0x88
    0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,  // 0x90
    0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178,  // 0x98
};

// The character of a byte; every other byte is the character of its own number.
constexpr char16_t Cp1252Char(unsigned char byte) {
    if (byte >= 0x80 && byte <= 0x9F)
        return kCp1252HighControls[static_cast<std::size_t>(byte - 0x80)];
    return static_cast<char16_t>(byte);
}

// The byte of a character, or -1 when Windows-1252 has none.
constexpr int Cp1252Byte(char32_t c) {
    if (c < 0x80 || (c >= 0xA0 && c <= 0xFF)) return static_cast<int>(c);
    for (std::size_t i = 0; i < kCp1252HighControls.size(); ++i) {
        if (kCp1252HighControls[i] == c) return static_cast<int>(0x80 + i);
    }
    return -1;
}

}  // namespace lumbra::platform
