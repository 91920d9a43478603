#include "workbench/cli/display_text.h"

#include <algorithm>
#include <array>
#include <limits>

#include "formats/text/latin1.h"
#include "formats/text/utf8.h"

namespace workbench {

namespace {

struct Range {
    char32_t first;
    char32_t last;
};

template <std::size_t Size>
bool isIn(const std::array<Range, Size>& ranges, char32_t code) {
    return std::any_of(ranges.begin(), ranges.end(), [code](const Range& range) {
        return code >= range.first && code <= range.last;
    });
}

// Two columns: Hangul, CJK, kana, full-width forms, emoji.
constexpr std::array<Range, 9> wide{{{0x1100, 0x115F},
                                     {0x2E80, 0x303E},
                                     {0x3041, 0xA4CF},
                                     {0xAC00, 0xD7A3},
                                     {0xF900, 0xFAFF},
                                     {0xFE30, 0xFE6F},
                                     {0xFF00, 0xFF60},
                                     {0x1F300, 0x1FAFF},
                                     {0x20000, 0x3FFFD}}};

// No column: combining marks, zero-width characters, variation selectors.
constexpr std::array<Range, 5> combining{
    {{0x0300, 0x036F}, {0x200B, 0x200F}, {0x20D0, 0x20FF}, {0xFE00, 0xFE0F}, {0xFE20, 0xFE2F}}};

// Those beyond ASCII too: U+009B begins a command to a terminal as an escape and a bracket do.
bool isControl(char32_t code) {
    return code < 0x20 || (code >= 0x7F && code <= 0x9F);
}

std::size_t columnsOf(char32_t code) {
    if (isIn(combining, code)) return 0;
    return isIn(wide, code) ? 2 : 1;
}

}  // namespace

std::string toUtf8(std::string_view text) {
    return intake::isValidUtf8(text) ? std::string(text) : intake::latin1ToUtf8(text);
}

std::size_t displayWidth(std::string_view text) {
    std::size_t width = 0;
    while (!text.empty()) {
        const auto character = intake::utf8CharacterAt(text);
        width += columnsOf(character.code);
        text.remove_prefix(character.length);
    }
    return width;
}

std::string printable(std::string_view text) {
    return fitted(text, std::numeric_limits<std::size_t>::max());
}

std::string fitted(std::string_view text, std::size_t width) {
    std::string out;
    std::size_t used = 0;
    const bool cut = displayWidth(text) > width;
    const std::size_t room = cut ? width - 1 : width;
    while (!text.empty()) {
        const auto character = intake::utf8CharacterAt(text);
        const std::size_t columns = columnsOf(character.code);
        if (used + columns > room) break;
        const bool shown = character.isValid && !isControl(character.code);
        out += !shown ? " " : text.substr(0, character.length);
        used += columns;
        text.remove_prefix(character.length);
    }
    return cut ? out + "…" : out;
}

}  // namespace workbench
