#include "workbench/cli/display_text.h"

#include <algorithm>
#include <array>

namespace workbench {

namespace {

struct Character {
    char32_t code = 0;
    std::size_t bytes = 0;  // 0 when the bytes are no UTF-8
};

std::size_t lengthFromLead(unsigned char lead) {
    if (lead < 0x80) return 1;
    if (lead >= 0xC2 && lead < 0xE0) return 2;
    if (lead >= 0xE0 && lead < 0xF0) return 3;
    if (lead >= 0xF0 && lead < 0xF5) return 4;
    return 0;
}

// Too long forms, surrogates and what lies beyond Unicode are no characters.
bool isCharacter(char32_t code, std::size_t bytes) {
    constexpr std::array<char32_t, 5> smallest{0, 0, 0x80, 0x800, 0x10000};
    return code >= smallest[bytes] && code <= 0x10FFFF && (code < 0xD800 || code > 0xDFFF);
}

Character characterAt(std::string_view text, std::size_t position) {
    const auto lead = static_cast<unsigned char>(text[position]);
    const std::size_t length = lengthFromLead(lead);
    if (length == 0 || position + length > text.size()) return {};
    if (length == 1) return {lead, 1};
    char32_t code = lead & (0x7FU >> length);
    for (std::size_t i = 1; i < length; ++i) {
        const auto next = static_cast<unsigned char>(text[position + i]);
        if ((next & 0xC0U) != 0x80U) return {};
        code = code << 6 | (next & 0x3FU);
    }
    return isCharacter(code, length) ? Character{code, length} : Character{};
}

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

std::size_t columnsOf(char32_t code) {
    if (isIn(combining, code)) return 0;
    return isIn(wide, code) ? 2 : 1;
}

bool isUtf8(std::string_view text) {
    for (std::size_t i = 0; i < text.size();) {
        const Character character = characterAt(text, i);
        if (character.bytes == 0) return false;
        i += character.bytes;
    }
    return true;
}

std::string fromLatin1(std::string_view text) {
    std::string out;
    for (const char c : text) {
        const auto byte = static_cast<unsigned char>(c);
        if (byte < 0x80) {
            out += c;
        } else {
            out += static_cast<char>(0xC0U | byte >> 6U);
            out += static_cast<char>(0x80U | (byte & 0x3FU));
        }
    }
    return out;
}

}  // namespace

std::string toUtf8(std::string_view text) {
    return isUtf8(text) ? std::string(text) : fromLatin1(text);
}

std::size_t displayWidth(std::string_view text) {
    std::size_t width = 0;
    for (std::size_t i = 0; i < text.size();) {
        const Character character = characterAt(text, i);
        width += character.bytes == 0 ? 1 : columnsOf(character.code);
        i += std::max<std::size_t>(character.bytes, 1);
    }
    return width;
}

std::string fitted(std::string_view text, std::size_t width) {
    std::string out;
    std::size_t used = 0;
    const bool cut = displayWidth(text) > width;
    const std::size_t room = cut ? width - 1 : width;
    for (std::size_t i = 0; i < text.size();) {
        const Character character = characterAt(text, i);
        const std::size_t bytes = std::max<std::size_t>(character.bytes, 1);
        const std::size_t columns = character.bytes == 0 ? 1 : columnsOf(character.code);
        if (used + columns > room) break;
        const bool control = character.code < 0x20 || character.code == 0x7F;
        out += control ? " " : text.substr(i, bytes);
        used += columns;
        i += bytes;
    }
    return cut ? out + "…" : out;
}

}  // namespace workbench
