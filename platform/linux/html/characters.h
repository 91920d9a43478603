#pragma once

// Characters as the HTML standard groups them.

#include <cstdint>
#include <string_view>

namespace intake::html {

constexpr std::string_view WHITE_SPACE = "\t\n\f\r ";
constexpr std::string_view REPLACEMENT = "\xEF\xBF\xBD";  // U+FFFD

constexpr bool isSpace(char c) {
    return c == ' ' || c == '\n' || c == '\t' || c == '\f' || c == '\r';
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

/// The value of a digit in base 10 or 16; -1 when it is none.
constexpr int digitOf(char c, bool hexadecimal) {
    if (isDigit(c)) {
        return c - '0';
    }
    const char lower = toLower(c);
    return hexadecimal && lower >= 'a' && lower <= 'f' ? lower - 'a' + 10 : -1;
}

/// Whether a text begins with `start`, which is in lower case, without regard to case.
constexpr bool startsWithIgnoringCase(std::string_view text, std::string_view start) {
    if (text.size() < start.size()) {
        return false;
    }
    for (size_t i = 0; i < start.size(); ++i) {
        if (toLower(text[i]) != start[i]) {
            return false;
        }
    }
    return true;
}

constexpr bool equalsIgnoringCase(std::string_view text, std::string_view lower) {
    return text.size() == lower.size() && startsWithIgnoringCase(text, lower);
}

/// What a byte means in windows-1252, and the number of a character reference in old pages.
uint32_t fromWindows1252(unsigned char byte);

/// Writes a character in UTF-8, up to 4 bytes, and returns where it ends.
char* putUtf8(uint32_t character, char* out);

}  // namespace intake::html
