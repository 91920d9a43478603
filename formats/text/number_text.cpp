#include "formats/text/number_text.h"

#include <cmath>

namespace intake {

namespace {

constexpr double TOO_LARGE = 1e11;  // to be written without an exponent
constexpr double TOO_SMALL = 1e-4;
constexpr int DIGITS = 10;
constexpr int DIGITS_BESIDE_AN_EXPONENT = 6;

std::string written(double number, std::chars_format format, int decimals) {
    std::array<char, 64> text;
    return {text.data(),
            std::to_chars(text.data(), text.data() + text.size(), number, format, decimals).ptr};
}

/// Without the zeros at the end of a fraction.
std::string withoutZeros(std::string text) {
    if (text.find('.') != std::string::npos) {
        text.erase(text.find_last_not_of('0') + 1);
        text.erase(text.find_last_not_of('.') + 1);
    }
    return text;
}

std::string withExponent(double number) {
    const std::string text =
        written(number, std::chars_format::scientific, DIGITS_BESIDE_AN_EXPONENT - 1);
    const size_t exponent = text.find('e');
    return withoutZeros(text.substr(0, exponent)) + "E" + text.substr(exponent + 1);
}

}  // namespace

std::string generalNumber(double number) {
    const double size = std::abs(number);
    if (size == 0) {
        return "0";
    }
    if (size < TOO_SMALL || size >= TOO_LARGE) {
        return withExponent(number);
    }
    const int whole = size < 1 ? 1 : static_cast<int>(std::log10(size)) + 1;
    return withoutZeros(
        written(number, std::chars_format::fixed, whole < DIGITS ? DIGITS - whole : 0));
}

}  // namespace intake
