#pragma once

#include <concepts>
#include <cstddef>
#include <cstdint>

namespace intake {

/// The number that is stored at `bytes`, lowest byte first.
template <std::unsigned_integral Number>
Number littleEndian(const char* bytes) {
    Number number = 0;
    for (size_t i = 0; i < sizeof(Number); ++i) {
        const auto byte = static_cast<unsigned char>(bytes[i]);
        number = static_cast<Number>(number | static_cast<Number>(byte) << (8 * i));
    }
    return number;
}

}  // namespace intake
