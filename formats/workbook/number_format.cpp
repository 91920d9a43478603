#include "formats/workbook/number_format.h"

#include <algorithm>
#include <array>

#include "formats/text/ascii.h"

namespace intake {

namespace {

struct BuiltIn {
    size_t first;
    size_t last;
    DateFormat format;
};

// 27 to 36 and 50 to 58 are dates and times in the East Asian languages, and nothing in the others.
constexpr std::array<BuiltIn, 8> BUILT_IN_DATES{{
    {14, 17, DateFormat::DAY},
    {18, 21, DateFormat::TIME},
    {22, 22, DateFormat::DAY},
    {27, 31, DateFormat::DAY},
    {32, 33, DateFormat::TIME},
    {34, 36, DateFormat::DAY},
    {45, 47, DateFormat::TIME},
    {50, 58, DateFormat::DAY},
}};

/// Whether brackets hold a duration ([h], [mm]…); they can also hold a colour, a condition or a
/// language.
bool isDuration(std::string_view inBrackets) {
    return !inBrackets.empty() && inBrackets.find_first_not_of("hHmMsS") == std::string_view::npos;
}

}  // namespace

DateFormat dateFormatOf(std::string_view code) {
    if (equalIgnoringCase(code, "General")) {
        return DateFormat::NONE;
    }
    DateFormat format = DateFormat::NONE;
    bool hasMonthOrMinute = false;
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
                    format = DateFormat::TIME;
                }
                at = close;
                break;
            case 'y':
            case 'Y':
            case 'd':
            case 'D':
                return DateFormat::DAY;
            case 'm':
            case 'M':
                if (startsWithIgnoringCase(code.substr(at), "mmm")) {
                    return DateFormat::DAY;
                }
                hasMonthOrMinute = true;
                break;
            case 'h':
            case 'H':
            case 's':
            case 'S':
                format = DateFormat::TIME;
                break;
            default:
                break;
        }
    }
    // Beside hours or seconds it is minutes.
    return hasMonthOrMinute && format == DateFormat::NONE ? DateFormat::DAY : format;
}

DateFormat builtInDateFormat(size_t number) {
    const auto found = std::find_if(
        BUILT_IN_DATES.begin(), BUILT_IN_DATES.end(),
        [number](const BuiltIn& range) { return number >= range.first && number <= range.last; });
    return found == BUILT_IN_DATES.end() ? DateFormat::NONE : found->format;
}

}  // namespace intake
