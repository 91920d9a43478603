#include "formats/html/characters.h"

#include <array>

namespace intake::html {

namespace {

/// From 128 to 159; 0 stands for the number itself.
constexpr std::array<char16_t, 32> WINDOWS_1252{
    0x20AC, 0,      0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0,      0x017D, 0,      0,      0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0,      0x017E, 0x0178};

}  // namespace

char32_t fromWindows1252(unsigned char byte) {
    const char32_t mapped = byte >= 128 && byte < 160 ? WINDOWS_1252[byte - 128U] : 0;
    return mapped != 0 ? mapped : byte;
}

}  // namespace intake::html
