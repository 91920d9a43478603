#include "readers/json/json_number.h"

#include <algorithm>
#include <charconv>
#include <limits>
#include <system_error>

#include "pipeline/script_text.h"

namespace intake {

namespace {

constexpr size_t WRITTEN_DIGITS = 6;

bool hasExponent(std::string_view source) {
    return std::any_of(source.begin(), source.end(), [](char c) { return c == 'e' || c == 'E'; });
}

/// Whether a number has so few digits that they are written as they stand, but for the zeros at the
/// end of a fraction. Below 0.0001 an exponent is written instead.
bool isShort(std::string_view source) {
    const size_t point = source.find('.') == std::string_view::npos ? 0 : 1;
    return source.size() <= WRITTEN_DIGITS + point && !hasExponent(source) &&
           !source.starts_with("0.0000");
}

std::string_view withoutTrailingZeros(std::string_view source) {
    if (source.find('.') == std::string_view::npos) {
        return source;
    }
    const size_t last = source.find_last_not_of('0');
    return source.substr(0, source[last] == '.' ? last : last + 1);
}

/// The decimal exponent that a number has when it is written as 0.d1d2d3...
long long decimalExponent(std::string_view source) {
    const size_t exponentMark = source.find_first_of("eE");
    long long exponent = 0;
    if (exponentMark != std::string_view::npos) {
        std::string_view digits = source.substr(exponentMark + 1);
        digits.remove_prefix(digits.starts_with('+') ? 1 : 0);
        const auto parsed = std::from_chars(digits.data(), digits.data() + digits.size(), exponent);
        if (parsed.ec == std::errc::result_out_of_range) {
            exponent = digits.starts_with('-') ? std::numeric_limits<int>::min()
                                               : std::numeric_limits<int>::max();
        }
    }
    const std::string_view significand = source.substr(0, exponentMark);
    const size_t point = std::min(significand.find('.'), significand.size());
    const size_t first = significand.find_first_of("123456789");
    const auto leading = static_cast<long long>(point) - static_cast<long long>(first);
    return exponent + leading + (first > point ? 1 : 0);
}

/// What a number that a double cannot hold is read as.
double outOfRange(std::string_view source) {
    const double magnitude =
        decimalExponent(source) > 0 ? std::numeric_limits<double>::infinity() : 0.0;
    return source.starts_with('-') ? -magnitude : magnitude;
}

}  // namespace

void appendJsonNumber(std::string& script, std::string_view source) {
    if (isShort(source)) {
        script.append(withoutTrailingZeros(source));
        return;
    }
    double number = 0;
    const auto parsed = std::from_chars(source.data(), source.data() + source.size(), number);
    if (parsed.ec == std::errc::result_out_of_range) {
        number = outOfRange(source);
    }
    appendNumber(script, number);
}

}  // namespace intake
