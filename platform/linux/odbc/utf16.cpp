#include "platform/linux/odbc/utf16.h"

#include <cstdint>

namespace intake {

namespace {

constexpr char32_t REPLACEMENT = 0xFFFD;

bool isHighSurrogate(char32_t unit) {
    return unit >= 0xD800 && unit < 0xDC00;
}

bool isLowSurrogate(char32_t unit) {
    return unit >= 0xDC00 && unit < 0xE000;
}

/// Takes one character off the front.
char32_t takeCharacter(std::u16string_view& text) {
    const char32_t unit = text[0];
    text.remove_prefix(1);
    if (isHighSurrogate(unit) && !text.empty() && isLowSurrogate(text[0])) {
        const char32_t low = text[0];
        text.remove_prefix(1);
        return 0x10000 + ((unit - 0xD800) << 10) + (low - 0xDC00);
    }
    return isHighSurrogate(unit) || isLowSurrogate(unit) ? REPLACEMENT : unit;
}

char byteOf(char32_t bits) {
    return static_cast<char>(static_cast<uint8_t>(bits));
}

/// The bytes after the first one, each with six bits.
char* putContinuation(char32_t character, int bytes, char* out) {
    for (int shift = 6 * (bytes - 1); shift >= 0; shift -= 6) {
        *out++ = byteOf(0x80 | ((character >> shift) & 0x3F));
    }
    return out;
}

char* putCharacter(char32_t character, char* out) {
    if (character < 0x80) {
        *out++ = byteOf(character);
        return out;
    }
    if (character < 0x800) {
        *out++ = byteOf(0xC0 | (character >> 6));
        return putContinuation(character, 1, out);
    }
    if (character < 0x10000) {
        *out++ = byteOf(0xE0 | (character >> 12));
        return putContinuation(character, 2, out);
    }
    *out++ = byteOf(0xF0 | (character >> 18));
    return putContinuation(character, 3, out);
}

struct Lead {
    int continuation;  // how many bytes follow
    char32_t bits;     // what the first byte gives
    char32_t least;    // a smaller character could be written shorter
};

Lead leadOf(uint8_t byte) {
    if (byte < 0x80) return {0, byte, 0};
    if (byte >= 0xC2 && byte < 0xE0) return {1, byte & 0x1FU, 0x80};
    if (byte >= 0xE0 && byte < 0xF0) return {2, byte & 0x0FU, 0x800};
    if (byte >= 0xF0 && byte < 0xF5) return {3, byte & 0x07U, 0x10000};
    return {0, REPLACEMENT, 0};
}

bool isCharacter(char32_t value) {
    return value < 0x110000 && !(value >= 0xD800 && value < 0xE000);
}

/// Takes one character, or one byte that belongs to none, off the front.
char32_t takeCharacter(std::string_view& text) {
    const Lead lead = leadOf(static_cast<uint8_t>(text[0]));
    text.remove_prefix(1);
    char32_t character = lead.bits;
    std::string_view rest = text;
    for (int i = 0; i < lead.continuation; ++i) {
        if (rest.empty() || (static_cast<uint8_t>(rest[0]) & 0xC0) != 0x80) {
            return REPLACEMENT;
        }
        character = (character << 6) | (static_cast<uint8_t>(rest[0]) & 0x3FU);
        rest.remove_prefix(1);
    }
    if (character < lead.least || !isCharacter(character)) {
        return REPLACEMENT;
    }
    text = rest;
    return character;
}

}  // namespace

size_t toUtf8(std::u16string_view text, char* out) {
    char* const start = out;
    while (!text.empty()) {
        if (text[0] < 0x80) {
            *out++ = static_cast<char>(text[0]);
            text.remove_prefix(1);
        } else {
            out = putCharacter(takeCharacter(text), out);
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
        const char32_t character = takeCharacter(text);
        if (character < 0x10000) {
            units += static_cast<char16_t>(character);
        } else {
            units += static_cast<char16_t>(0xD800 + ((character - 0x10000) >> 10));
            units += static_cast<char16_t>(0xDC00 + ((character - 0x10000) & 0x3FF));
        }
    }
    return units;
}

}  // namespace intake
