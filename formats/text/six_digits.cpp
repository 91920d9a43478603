#include "formats/text/six_digits.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <system_error>

namespace intake {

namespace {

constexpr size_t WRITTEN_DIGITS = 6;

/// How many decimals make up six digits of a number from `least` on.
struct Decimals {
    double least;
    size_t count;
    double scale;  // 10 to the power of the count
};

constexpr std::array<Decimals, 10> DECIMALS{{
    {1e5, 0, 1e0},
    {1e4, 1, 1e1},
    {1e3, 2, 1e2},
    {1e2, 3, 1e3},
    {1e1, 4, 1e4},
    {1e0, 5, 1e5},
    {1e-1, 6, 1e6},
    {1e-2, 7, 1e7},
    {1e-3, 8, 1e8},
    {1e-4, 9, 1e9},
}};
constexpr uint32_t SEVEN_DIGITS = 1000000;

// Scaling is wrong by less than 1e-9, so what is nearer to the middle than this is left undecided.
constexpr double DOUBT = 1e-6;

/// Writes the digits with a point before the last `decimals`, without zeros at the end.
void appendDigits(std::string& out, bool negative, uint32_t digits, size_t decimals) {
    std::array<char, 16> text;
    char* const end = text.data() + text.size();
    char* at = end;
    bool zeros = true;
    for (; decimals > 0; --decimals, digits /= 10) {
        const uint32_t digit = digits % 10;
        zeros = zeros && digit == 0;
        if (!zeros) {
            *--at = static_cast<char>('0' + digit);
        }
    }
    if (!zeros) {
        *--at = '.';
    }
    do {
        *--at = static_cast<char>('0' + digits % 10);
        digits /= 10;
    } while (digits > 0);
    if (negative) {
        *--at = '-';
    }
    out.append(std::string_view(at, static_cast<size_t>(end - at)));
}

/// Writes most numbers in a fraction of the time that the general way takes. False, and nothing is
/// written, for numbers beyond 0.0001 to 999999 and for the few of which a sixth digit is decided
/// by more than a double shows.
bool appendUsualNumber(std::string& out, double number) {
    const double size = std::fabs(number);
    if (!(size >= DECIMALS.back().least && size < SEVEN_DIGITS)) {
        return false;
    }
    size_t row = 0;
    while (size < DECIMALS[row].least) {
        ++row;
    }
    const double scaled = size * DECIMALS[row].scale;
    const auto whole = static_cast<uint32_t>(scaled);
    const double rest = scaled - whole;
    const uint32_t digits = whole + (rest > 0.5 ? 1 : 0);
    if (std::fabs(rest - 0.5) < DOUBT || digits >= SEVEN_DIGITS) {
        return false;
    }
    appendDigits(out, number < 0, digits, DECIMALS[row].count);
    return true;
}

/// How a number is written that has so few digits that they stay as they stand, but for the zeros
/// at the end of a fraction; empty for any other. Below 0.0001 an exponent is written instead.
std::string_view asItStands(std::string_view source) {
    if (source.size() > WRITTEN_DIGITS + 1) {
        return {};
    }
    size_t point = source.size();
    size_t behindLast = 0;  // behind the last character that is not a zero
    for (size_t i = 0; i < source.size(); ++i) {
        const char c = source[i];
        if (c == 'e' || c == 'E') {
            return {};
        }
        point = c == '.' ? i : point;
        behindLast = c == '0' ? behindLast : i + 1;
    }
    if (point == source.size()) {
        return source.size() <= WRITTEN_DIGITS ? source : std::string_view();
    }
    if (source.starts_with("0.0000")) {
        return {};
    }
    return source.substr(0, behindLast == point + 1 ? point : behindLast);
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

/// How many digits a text begins with.
size_t leadingDigits(std::string_view text) {
    size_t count = 0;
    while (count < text.size() && text[count] >= '0' && text[count] <= '9') {
        ++count;
    }
    return count;
}

/// What a number that a double cannot hold is read as.
double outOfRange(std::string_view source) {
    const double magnitude =
        decimalExponent(source) > 0 ? std::numeric_limits<double>::infinity() : 0.0;
    return source.starts_with('-') ? -magnitude : magnitude;
}

}  // namespace

void appendSixDigits(std::string& out, double number) {
    if (appendUsualNumber(out, number)) {
        return;
    }
    std::array<char, 32> digits;
    const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), number,
                                   std::chars_format::general, WRITTEN_DIGITS)
                         .ptr;
    out.append(std::string_view(digits.data(), end));
}

void appendSixDigits(std::string& out, std::string_view decimal) {
    if (const std::string_view text = asItStands(decimal); !text.empty()) {
        out.append(text);
        return;
    }
    double number = 0;
    const auto parsed = std::from_chars(decimal.data(), decimal.data() + decimal.size(), number);
    if (parsed.ec == std::errc::result_out_of_range) {
        number = outOfRange(decimal);
    }
    appendSixDigits(out, number);
}

bool isPlainDecimal(std::string_view text) {
    text.remove_prefix(text.starts_with('-') ? 1 : 0);
    const size_t whole = leadingDigits(text);
    if (whole == 0 || (whole > 1 && text[0] == '0')) {
        return false;
    }
    text.remove_prefix(whole);
    return text.empty() ||
           (text[0] == '.' && text.size() > 1 && leadingDigits(text.substr(1)) == text.size() - 1);
}

}  // namespace intake
