#include "workbench/cobalt/number_text.h"

#include <charconv>
#include <cstdlib>

#include "formats/text/ascii.h"

namespace cobalt {

namespace {

bool startsLikeANumber(std::string_view text) {
    if (!text.empty() && text.front() == '-') text.remove_prefix(1);
    return !text.empty() && (text.front() == '.' || intake::isDigit(text.front()));
}

}  // namespace

std::optional<double> parseNumber(std::string_view text) {
    if (!startsLikeANumber(text)) return std::nullopt;
    double number = 0;
    const char* end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, number);
    if (stop != end || error == std::errc::invalid_argument) return std::nullopt;
    // Out of range, std::from_chars leaves the number unset; strtod gives 0 or an infinity.
    return error == std::errc() ? number : std::strtod(std::string(text).c_str(), nullptr);
}

std::string formatNumber(double number) {
    char buffer[32];
    const auto [end, error] =
        std::to_chars(buffer, buffer + sizeof buffer, number, std::chars_format::general, 15);
    return std::string(buffer, end);
}

}  // namespace cobalt
