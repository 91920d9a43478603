#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace intake {

/// What stands for bytes that are no character.
constexpr char32_t REPLACEMENT_CHARACTER = 0xFFFD;
constexpr std::string_view REPLACEMENT = "\xEF\xBF\xBD";

constexpr std::string_view UTF8_MARK = "\xEF\xBB\xBF";

/// The most bytes that a character takes.
constexpr size_t LONGEST_UTF8 = 4;

/// A character at the start of a text.
struct Utf8Character {
    char32_t code;  // REPLACEMENT_CHARACTER when the bytes are no character
    size_t length;  // in bytes: of the character, or of what could have become one; at least 1
    bool isValid;
};

/// The character that a text, which is not empty, begins with. Too long forms, surrogates and what
/// lies beyond Unicode are no characters.
Utf8Character utf8CharacterAt(std::string_view text);

bool isValidUtf8(std::string_view text);

/// The text with U+FFFD for what is not UTF-8, as browsers put it: one for each sequence that could
/// have become a character.
std::string withValidUtf8(std::string text);

/// How many bytes from the start are ASCII.
size_t asciiLength(std::string_view text);

/// Writes a character, up to LONGEST_UTF8 bytes, and returns where it ends. Inline, for it is in
/// the innermost loops.
inline char* putUtf8(char32_t character, char* out) {
    const auto put = [&out](char32_t byte) { *out++ = static_cast<char>(byte); };
    if (character < 0x80) {
        put(character);
    } else if (character < 0x800) {
        put(0xC0 | character >> 6);
        put(0x80 | (character & 0x3F));
    } else if (character < 0x10000) {
        put(0xE0 | character >> 12);
        put(0x80 | (character >> 6 & 0x3F));
        put(0x80 | (character & 0x3F));
    } else {
        put(0xF0 | character >> 18);
        put(0x80 | (character >> 12 & 0x3F));
        put(0x80 | (character >> 6 & 0x3F));
        put(0x80 | (character & 0x3F));
    }
    return out;
}

inline void appendUtf8(char32_t character, std::string& out) {
    char bytes[LONGEST_UTF8];
    out.append(bytes, putUtf8(character, bytes));
}

}  // namespace intake
