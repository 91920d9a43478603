#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace intake {

constexpr bool isHighSurrogate(char32_t unit) {
    return unit >= 0xD800 && unit < 0xDC00;
}

constexpr bool isLowSurrogate(char32_t unit) {
    return unit >= 0xDC00 && unit < 0xE000;
}

constexpr bool isSurrogate(char32_t unit) {
    return unit >= 0xD800 && unit < 0xE000;
}

/// The character of a high surrogate and a low one.
constexpr char32_t joinedSurrogates(char32_t high, char32_t low) {
    return 0x10000 + ((high - 0xD800) << 10) + (low - 0xDC00);
}

/// The most bytes that one UTF-16 unit can become.
constexpr size_t UTF8_BYTES_PER_UNIT = 3;

/// Writes the text in UTF-8 to `out`, which has room for UTF8_BYTES_PER_UNIT bytes a unit, and
/// returns their number. A surrogate without its other half becomes U+FFFD.
size_t toUtf8(std::u16string_view text, char* out);
std::string toUtf8(std::u16string_view text);

/// What is no UTF-8 becomes U+FFFD.
std::u16string toUtf16(std::string_view text);

}  // namespace intake
