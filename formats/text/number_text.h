#pragma once

#include <array>
#include <charconv>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>

namespace intake {

/// The number that the whole text is, in the form of std::from_chars; `format` is its base or form.
template <class Number, class... Format>
std::optional<Number> parseWhole(std::string_view text, Format... format) {
    Number number{};
    const char* const end = text.data() + text.size();
    const auto parsed = std::from_chars(text.data(), end, number, format...);
    if (parsed.ec != std::errc() || parsed.ptr != end) {
        return {};
    }
    return number;
}

/// A number in as few digits as say it exactly.
inline std::string shortestNumber(double number) {
    std::array<char, 32> digits;
    return {digits.data(), std::to_chars(digits.data(), digits.data() + digits.size(), number).ptr};
}

/// A number as a worksheet shows it that says nothing of its form, in up to eleven signs: 100000,
/// 0.333333333, 1.23457E+11.
std::string generalNumber(double number);

}  // namespace intake
