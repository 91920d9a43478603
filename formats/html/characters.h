#pragma once

// Characters as the HTML standard groups them.

#include <cstdint>
#include <string_view>

#include "formats/text/ascii.h"

namespace intake::html {

constexpr std::string_view WHITE_SPACE = "\t\n\f\r ";

constexpr bool isSpace(char c) {
    return c == ' ' || c == '\n' || c == '\t' || c == '\f' || c == '\r';
}

/// The value of a digit in base 10 or 16; -1 when it is none.
constexpr int digitOf(char c, bool hexadecimal) {
    if (isDigit(c)) {
        return c - '0';
    }
    const char lower = toLower(c);
    return hexadecimal && lower >= 'a' && lower <= 'f' ? lower - 'a' + 10 : -1;
}

/// What a byte means in windows-1252, and the number of a character reference in old pages.
char32_t fromWindows1252(unsigned char byte);

}  // namespace intake::html
