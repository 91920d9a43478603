#include "formats/text/utf8.h"

#include <cstdint>
#include <cstring>

#include "formats/text/ascii.h"

namespace intake {

namespace {

constexpr size_t WORD = sizeof(uint64_t);
constexpr uint64_t HIGH_BITS = 0x8080808080808080;

/// How much of a text is valid UTF-8.
size_t validLength(std::string_view text) {
    size_t length = asciiLength(text);
    while (length < text.size()) {
        const Utf8Character character = utf8CharacterAt(text.substr(length));
        if (!character.isValid) {
            break;
        }
        length += character.length;
        length += asciiLength(text.substr(length));
    }
    return length;
}

}  // namespace

size_t asciiLength(std::string_view text) {
    size_t length = 0;
    for (; length + WORD <= text.size(); length += WORD) {
        uint64_t word = 0;
        std::memcpy(&word, text.data() + length, WORD);
        if ((word & HIGH_BITS) != 0) {
            break;
        }
    }
    while (length < text.size() && isAscii(text[length])) {
        ++length;
    }
    return length;
}

Utf8Character utf8CharacterAt(std::string_view text) {
    const auto first = static_cast<unsigned char>(text[0]);
    if (first < 0x80) {
        return {first, 1, true};
    }
    if (first < 0xC2 || first > 0xF4) {
        return {REPLACEMENT_CHARACTER, 1, false};
    }
    const size_t needed = first < 0xE0 ? 2 : first < 0xF0 ? 3 : 4;
    // Neither too long a form, nor a surrogate, nor beyond the last character.
    const unsigned char least = first == 0xE0 ? 0xA0 : first == 0xF0 ? 0x90 : 0x80;
    const unsigned char most = first == 0xED ? 0x9F : first == 0xF4 ? 0x8F : 0xBF;
    char32_t code = first & (0x7FU >> needed);
    for (size_t place = 1; place < needed; ++place) {
        const auto byte = place < text.size() ? static_cast<unsigned char>(text[place]) : 0U;
        if (byte < (place == 1 ? least : 0x80) || byte > (place == 1 ? most : 0xBF)) {
            return {REPLACEMENT_CHARACTER, place, false};
        }
        code = code << 6 | (byte & 0x3F);
    }
    return {code, needed, true};
}

bool isValidUtf8(std::string_view text) {
    return validLength(text) == text.size();
}

std::string withValidUtf8(std::string text) {
    std::string_view rest = text;
    size_t valid = validLength(rest);
    if (valid == rest.size()) {
        return text;
    }
    std::string repaired;
    while (valid < rest.size()) {
        repaired.append(rest.substr(0, valid)).append(REPLACEMENT);
        rest.remove_prefix(valid);
        rest.remove_prefix(utf8CharacterAt(rest).length);
        valid = validLength(rest);
    }
    return repaired.append(rest);
}

}  // namespace intake
