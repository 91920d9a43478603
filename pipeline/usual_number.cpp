#include "pipeline/usual_number.h"

#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace intake {

namespace {

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
void appendDigits(std::string& script, bool negative, uint32_t digits, size_t decimals) {
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
    script.append(std::string_view(at, static_cast<size_t>(end - at)));
}

}  // namespace

bool appendUsualNumber(std::string& script, double number) {
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
    appendDigits(script, number < 0, digits, DECIMALS[row].count);
    return true;
}

}  // namespace intake
