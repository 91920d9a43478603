#include "formats/text/utf16.h"

#include "formats/text/utf8.h"

namespace intake {

namespace {

/// Takes one character off the front.
char32_t takeCharacter(std::u16string_view& text) {
    const char32_t unit = text[0];
    text.remove_prefix(1);
    if (isHighSurrogate(unit) && !text.empty() && isLowSurrogate(text[0])) {
        const char32_t low = text[0];
        text.remove_prefix(1);
        return joinedSurrogates(unit, low);
    }
    return isSurrogate(unit) ? REPLACEMENT_CHARACTER : unit;
}

}  // namespace

size_t toUtf8(std::u16string_view text, char* out) {
    char* const start = out;
    while (!text.empty()) {
        if (text[0] < 0x80) {
            *out++ = static_cast<char>(text[0]);
            text.remove_prefix(1);
        } else {
            out = putUtf8(takeCharacter(text), out);
        }
    }
    return static_cast<size_t>(out - start);
}

std::string toUtf8(std::u16string_view text) {
    std::string utf8(text.size() * UTF8_BYTES_PER_UNIT, '\0');
    utf8.resize(toUtf8(text, utf8.data()));
    return utf8;
}

std::u16string toUtf16(std::string_view text) {
    std::u16string units;
    units.reserve(text.size());
    while (!text.empty()) {
        const Utf8Character character = utf8CharacterAt(text);
        text.remove_prefix(character.length);
        if (character.code < 0x10000) {
            units += static_cast<char16_t>(character.code);
        } else {
            units += static_cast<char16_t>(0xD800 + ((character.code - 0x10000) >> 10));
            units += static_cast<char16_t>(0xDC00 + ((character.code - 0x10000) & 0x3FF));
        }
    }
    return units;
}

}  // namespace intake
