#include "formats/workbook/cell_text.h"

#include <array>
#include <charconv>
#include <chrono>
#include <cmath>
#include <cstdio>

#include "formats/text/number_text.h"
#include "formats/text/trim.h"
#include "formats/text/utf16.h"
#include "formats/text/utf8.h"

namespace intake {

namespace {

/// The number of a text of digits, with or without a point between them, that a double holds
/// exactly as a whole number and a power of ten, whose quotient is then right to the last bit. Most
/// are.
std::optional<double> parseShortNumber(std::string_view text) {
    constexpr size_t EXACT_DIGITS = 15;
    constexpr std::array<double, EXACT_DIGITS + 1> POWERS{
        1e0, 1e1, 1e2, 1e3, 1e4, 1e5, 1e6, 1e7, 1e8, 1e9, 1e10, 1e11, 1e12, 1e13, 1e14, 1e15};
    if (text.empty() || text.size() > EXACT_DIGITS) {
        return {};
    }
    uint64_t digits = 0;
    size_t point = text.size() - 1;  // without one, as if it were behind the last digit
    for (size_t i = 0; i < text.size(); ++i) {
        const auto digit = static_cast<unsigned char>(text[i] - '0');
        if (digit < 10) {
            digits = digits * 10 + digit;
        } else if (text[i] == '.' && point == text.size() - 1 && i > 0 && i < point) {
            point = i;
        } else {
            return {};
        }
    }
    return static_cast<double>(digits) / POWERS[text.size() - 1 - point];
}

/// The UTF-16 unit that an escape at `at` stands for.
std::optional<uint32_t> escapeAt(std::string_view text, size_t at) {
    constexpr size_t LENGTH = 7;  // _xHHHH_
    if (at + LENGTH > text.size() || text[at] != '_' || text[at + 1] != 'x' ||
        text[at + LENGTH - 1] != '_') {
        return {};
    }
    return parseWhole<uint32_t>(text.substr(at + 2, 4), 16);
}

constexpr std::chrono::sys_days DAY_0 =
    std::chrono::year(1899) / std::chrono::December / std::chrono::day(30);
constexpr double HIGHEST_DAY = 2958465;  // 9999-12-31

/// Appends the character of the escape at `at`, or of two that are a surrogate pair, and returns
/// the place behind. A zero, which no text can hold, is left out.
size_t takeEscape(std::string_view text, size_t at, uint32_t unit, std::string& out) {
    constexpr size_t LENGTH = 7;
    const auto low = isHighSurrogate(unit) ? escapeAt(text, at + LENGTH) : std::nullopt;
    if (low && isLowSurrogate(*low)) {
        appendUtf8(joinedSurrogates(unit, *low), out);
        return at + 2 * LENGTH;
    }
    if (unit != 0) {
        appendUtf8(isSurrogate(unit) ? REPLACEMENT_CHARACTER : unit, out);
    }
    return at + LENGTH;
}

/// Days since the serial day 0 of the 1900 system.
std::optional<double> parseDay(std::string_view text) {
    using namespace std::chrono;
    if (text.size() != 10 || text[4] != '-' || text[7] != '-') {
        return {};
    }
    const auto y = parseWhole<int>(text.substr(0, 4));
    const auto m = parseWhole<unsigned>(text.substr(5, 2));
    const auto d = parseWhole<unsigned>(text.substr(8, 2));
    if (!y || !m || !d) {
        return {};
    }
    const year_month_day date{year(*y), month(*m), day(*d)};
    return date.ok() ? std::optional<double>((sys_days(date) - DAY_0).count()) : std::nullopt;
}

/// A time of day as a fraction of the day.
std::optional<double> parseTime(std::string_view text) {
    if (text.ends_with('Z')) {
        text.remove_suffix(1);
    }
    if (text.size() < 5 || text[2] != ':' || (text.size() > 5 && text[5] != ':')) {
        return {};
    }
    const auto hours = parseWhole<unsigned>(text.substr(0, 2));
    const auto minutes = parseWhole<unsigned>(text.substr(3, 2));
    const auto seconds = text.size() > 5
                             ? parseWhole<double>(text.substr(6), std::chars_format::fixed)
                             : std::optional<double>(0);
    if (!hours || !minutes || !seconds || *hours > 24 || *minutes > 59 || !(*seconds < 61)) {
        return {};
    }
    return (*hours * 3600 + *minutes * 60 + *seconds) / 86400;
}

}  // namespace

void decodeEscapes(std::string& text) {
    size_t next = text.find("_x");
    if (next == std::string::npos) {
        return;
    }
    const std::string source = std::move(text);
    text.assign(source, 0, next);
    while (next < source.size()) {
        const auto unit = escapeAt(source, next);
        if (unit) {
            next = takeEscape(source, next, *unit, text);
        } else {
            text += source[next++];
        }
    }
}

std::optional<double> parseNumber(std::string_view text) {
    if (const auto number = parseShortNumber(text)) {
        return number;
    }
    text = trimmed(text, XML_SPACE);
    if (text.starts_with('+')) {
        text.remove_prefix(1);
    }
    const char first = text.starts_with('-') && text.size() > 1 ? text[1]
                       : text.empty()                           ? '\0'
                                                                : text[0];
    if (first != '.' && (first < '0' || first > '9')) {
        return {};  // not "inf" or "nan"
    }
    return parseWhole<double>(text, std::chars_format::general);
}

std::optional<size_t> parseIndex(std::string_view text) {
    return parseWhole<size_t>(trimmed(text, XML_SPACE));
}

std::optional<double> parseIsoDate(std::string_view text) {
    text = trimmed(text, XML_SPACE);
    const size_t separator = text.find('T');
    if (separator == std::string_view::npos) {
        const auto day = parseDay(text);
        return day ? day : parseTime(text);
    }
    const auto day = parseDay(text.substr(0, separator));
    const auto time = parseTime(text.substr(separator + 1));
    return day && time ? std::optional<double>(*day + *time) : std::nullopt;
}

std::string isoDate(double serial) {
    using namespace std::chrono;
    if (!(serial >= 0 && serial <= HIGHEST_DAY)) {
        return shortestNumber(serial);
    }
    const auto total = static_cast<int64_t>(std::llround(serial * 86400));
    const year_month_day date(DAY_0 + days(total / 86400));
    const hh_mm_ss time{seconds(total % 86400)};
    std::array<char, 32> text;
    const int length =
        total % 86400 == 0
            ? std::snprintf(text.data(), text.size(), "%04d-%02u-%02u", int{date.year()},
                            unsigned{date.month()}, unsigned{date.day()})
            : std::snprintf(text.data(), text.size(), "%04d-%02u-%02u %02d:%02d:%02d",
                            int{date.year()}, unsigned{date.month()}, unsigned{date.day()},
                            static_cast<int>(time.hours().count()),
                            static_cast<int>(time.minutes().count()),
                            static_cast<int>(time.seconds().count()));
    return {text.data(), static_cast<size_t>(length)};
}

}  // namespace intake
