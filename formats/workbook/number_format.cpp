#include "formats/workbook/number_format.h"

#include <algorithm>
#include <array>

#include "formats/text/ascii.h"

namespace intake {

namespace {

struct NumberRange {
    size_t first;
    size_t last;
};

// 27 to 36 and 50 to 58 are dates in the East Asian languages, and nothing in the others.
constexpr std::array<NumberRange, 4> BUILT_IN_DATES{{{14, 22}, {27, 36}, {45, 47}, {50, 58}}};

/// Whether brackets hold a duration ([h], [mm]…); they can also hold a colour, a condition or a
/// language.
bool isDuration(std::string_view inBrackets) {
    return !inBrackets.empty() && inBrackets.find_first_not_of("hHmMsS") == std::string_view::npos;
}

}  // namespace

bool isDateFormat(std::string_view code) {
    if (equalIgnoringCase(code, "General")) {
        return false;
    }
    for (size_t at = 0; at < code.size() && code[at] != ';'; ++at) {
        size_t close = at;
        switch (code[at]) {
            case '\\':  // the next character as it is
            case '_':   // a gap as wide as it
            case '*':   // filled up with it
                ++at;
                break;
            case '"':
                at = std::min(code.find('"', at + 1), code.size() - 1);
                break;
            case '[':
                close = std::min(code.find(']', at), code.size());
                if (isDuration(code.substr(at + 1, close - at - 1))) {
                    return true;
                }
                at = close;
                break;
            case 'y':
            case 'Y':
            case 'm':
            case 'M':
            case 'd':
            case 'D':
            case 'h':
            case 'H':
            case 's':
            case 'S':
                return true;
            default:
                break;
        }
    }
    return false;
}

bool isBuiltInDateFormat(size_t number) {
    return std::any_of(BUILT_IN_DATES.begin(), BUILT_IN_DATES.end(),
                       [number](const NumberRange& range) {
                           return number >= range.first && number <= range.last;
                       });
}

}  // namespace intake
