#include "platform/linux/html/utf8.h"

#include <cstdint>
#include <cstring>

#include "platform/linux/html/characters.h"

namespace intake::html {

namespace {

constexpr size_t WORD = sizeof(uint64_t);
constexpr uint64_t HIGH_BITS = 0x8080808080808080;

size_t asciiLength(std::string_view text) {
    size_t length = 0;
    for (; length + WORD <= text.size(); length += WORD) {
        uint64_t word = 0;
        std::memcpy(&word, text.data() + length, WORD);
        if ((word & HIGH_BITS) != 0) {
            break;
        }
    }
    while (length < text.size() && static_cast<unsigned char>(text[length]) < 0x80) {
        ++length;
    }
    return length;
}

struct Sequence {
    size_t length;  // of the character, or of what could have become one
    bool isValid;
};

/// The sequence that a text begins with, which is not ASCII.
Sequence sequenceAt(std::string_view text) {
    const auto first = static_cast<unsigned char>(text[0]);
    if (first < 0xC2 || first > 0xF4) {
        return {1, false};
    }
    const size_t needed = first < 0xE0 ? 2 : first < 0xF0 ? 3 : 4;
    // Neither too long a form, nor a surrogate, nor beyond the last character.
    const unsigned char least = first == 0xE0 ? 0xA0 : first == 0xF0 ? 0x90 : 0x80;
    const unsigned char most = first == 0xED ? 0x9F : first == 0xF4 ? 0x8F : 0xBF;
    for (size_t place = 1; place < needed; ++place) {
        const auto byte = place < text.size() ? static_cast<unsigned char>(text[place]) : 0;
        if (byte < (place == 1 ? least : 0x80) || byte > (place == 1 ? most : 0xBF)) {
            return {place, false};
        }
    }
    return {needed, true};
}

/// How much of a text is valid UTF-8.
size_t validLength(std::string_view text) {
    size_t length = asciiLength(text);
    while (length < text.size()) {
        const Sequence sequence = sequenceAt(text.substr(length));
        if (!sequence.isValid) {
            break;
        }
        length += sequence.length;
        length += asciiLength(text.substr(length));
    }
    return length;
}

}  // namespace

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
        rest.remove_prefix(sequenceAt(rest).length);
        valid = validLength(rest);
    }
    return repaired.append(rest);
}

}  // namespace intake::html
