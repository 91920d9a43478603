#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>

#include "formats/text/ascii.h"

namespace intake {

/// Whether a character of a string stands for itself: ASCII, and neither a control character nor a
/// double quote nor a backslash.
constexpr bool isPlain(char character) {
    return isAscii(character) && character >= ' ' && character != '"' && character != '\\';
}

/// How many plain characters stand at the start of a text that ends with a zero byte. Up to seven
/// bytes behind that are read.
inline size_t plainLength(const char* text) {
    static_assert(std::endian::native == std::endian::little);
    constexpr uint64_t EACH_BYTE = 0x0101010101010101;
    constexpr uint64_t HIGH_BITS = EACH_BYTE * 0x80;
    // Sets the high bit of a byte that is below the limit; of bytes behind such a one perhaps, too.
    const auto below = [](uint64_t bytes, uint64_t limit) { return bytes - EACH_BYTE * limit; };
    for (size_t length = 0;; length += sizeof(uint64_t)) {
        uint64_t bytes = 0;
        std::memcpy(&bytes, text + length, sizeof bytes);
        const uint64_t others = (below(bytes, ' ') | below(bytes ^ EACH_BYTE * '"', 1) |
                                 below(bytes ^ EACH_BYTE * '\\', 1) | bytes) &
                                HIGH_BITS;
        if (others != 0) {
            return length + static_cast<size_t>(std::countr_zero(others)) / 8;
        }
    }
}

}  // namespace intake
