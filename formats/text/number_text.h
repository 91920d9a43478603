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

/// A number as a worksheet shows it that says nothing of its form: 100000, 0.0001, 1E+11.
inline std::string generalNumber(double number) {
    const double size = number < 0 ? -number : number;
    if (size != 0 && (size < 1e-9 || size >= 1e11)) {
        std::string text = shortestNumber(number);
        for (char& character : text) {
            character = character == 'e' ? 'E' : character;
        }
        return text;
    }
    std::array<char, 64> digits;
    const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), number,
                                   std::chars_format::fixed);
    return {digits.data(), end.ptr};
}

}  // namespace intake
