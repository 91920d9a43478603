#pragma once

// ASCII characters, whatever the locale of the process is; it belongs to the host. All other bytes
// are no letters and no digits here, and stay as they are.

#include <algorithm>
#include <string>
#include <string_view>

namespace intake {

constexpr bool isAscii(char c) {
    return static_cast<unsigned char>(c) < 0x80;
}

constexpr bool isUpper(char c) {
    return c >= 'A' && c <= 'Z';
}

constexpr char toLower(char c) {
    return isUpper(c) ? static_cast<char>(c - 'A' + 'a') : c;
}

constexpr bool isLetter(char c) {
    return toLower(c) >= 'a' && toLower(c) <= 'z';
}

constexpr bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

inline std::string lowerCase(std::string_view text) {
    std::string lower(text);
    std::transform(lower.begin(), lower.end(), lower.begin(), toLower);
    return lower;
}

/// Whether two texts differ at most in the case of their ASCII letters.
constexpr bool equalIgnoringCase(std::string_view one, std::string_view other) {
    return std::equal(one.begin(), one.end(), other.begin(), other.end(),
                      [](char a, char b) { return toLower(a) == toLower(b); });
}

constexpr bool startsWithIgnoringCase(std::string_view text, std::string_view start) {
    return equalIgnoringCase(text.substr(0, start.size()), start);
}

}  // namespace intake
