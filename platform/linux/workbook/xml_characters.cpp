#include "platform/linux/workbook/xml_characters.h"

#include <charconv>
#include <cstring>

namespace intake {

namespace {

struct NamedCharacter {
    std::string_view reference;
    char character;
};

constexpr std::array<NamedCharacter, 5> NAMED{
    {{"&amp;", '&'}, {"&lt;", '<'}, {"&gt;", '>'}, {"&quot;", '"'}, {"&apos;", '\''}}};

bool isXmlCharacter(uint32_t character) {
    return character == '\t' || character == '\n' || character == '\r' ||
           (character >= 0x20 && character < 0xD800) ||
           (character >= 0xE000 && character < 0xFFFE) ||
           (character >= 0x10000 && character <= 0x10FFFF);
}

/// The length that a character's first byte announces; 0 when it cannot be one.
size_t utf8Length(unsigned char first) {
    if (first < 0x80) {
        return 1;
    }
    if (first < 0xC2 || first > 0xF4) {
        return 0;
    }
    return first < 0xE0 ? 2 : first < 0xF0 ? 3 : 4;
}

constexpr std::array<uint32_t, 5> LOWEST_OF_LENGTH{0, 0, 0x80, 0x800, 0x10000};

bool takeNumber(const char*& at, std::string& out) {
    const bool hexadecimal = at[2] == 'x';
    const char* const digits = at + (hexadecimal ? 3 : 2);
    const char* const end = digits + std::strspn(digits, "0123456789abcdefABCDEF");
    uint32_t character = 0;
    const auto parsed = std::from_chars(digits, end, character, hexadecimal ? 16 : 10);
    if (parsed.ec != std::errc() || parsed.ptr != end || *end != ';' ||
        !isXmlCharacter(character)) {
        return false;
    }
    appendUtf8(character, out);
    at = end + 1;
    return true;
}

}  // namespace

void appendUtf8(uint32_t character, std::string& out) {
    const auto byte = [&out](uint32_t value) { out += static_cast<char>(value); };
    if (character < 0x80) {
        byte(character);
    } else if (character < 0x800) {
        byte(0xC0 | character >> 6);
        byte(0x80 | (character & 0x3F));
    } else if (character < 0x10000) {
        byte(0xE0 | character >> 12);
        byte(0x80 | (character >> 6 & 0x3F));
        byte(0x80 | (character & 0x3F));
    } else {
        byte(0xF0 | character >> 18);
        byte(0x80 | (character >> 12 & 0x3F));
        byte(0x80 | (character >> 6 & 0x3F));
        byte(0x80 | (character & 0x3F));
    }
}

uint32_t takeUtf8(std::string_view text, size_t& at) {
    const auto first = static_cast<unsigned char>(text[at]);
    const size_t length = utf8Length(first);
    uint32_t character = length == 1 ? first : first & (0xFFU >> (length + 1));
    for (size_t i = 1; i < length; ++i) {
        character = character << 6 | (static_cast<unsigned char>(text[at + i]) & 0x3FU);
    }
    at += length;
    return character;
}

bool isXmlUtf8(std::string_view text) {
    for (size_t at = 0; at < text.size();) {
        const auto first = static_cast<unsigned char>(text[at]);
        const size_t length = utf8Length(first);
        if (length == 0 || length > text.size() - at) {
            return false;
        }
        for (size_t i = 1; i < length; ++i) {
            if ((static_cast<unsigned char>(text[at + i]) & 0xC0) != 0x80) {
                return false;
            }
        }
        const uint32_t character = takeUtf8(text, at);
        if (character < LOWEST_OF_LENGTH[length] || !isXmlCharacter(character)) {
            return false;
        }
    }
    return true;
}

bool takeReference(const char*& at, std::string& out) {
    if (at[1] == '#') {
        return takeNumber(at, out);
    }
    for (const NamedCharacter& named : NAMED) {
        if (std::strncmp(at, named.reference.data(), named.reference.size()) == 0) {
            out += named.character;
            at += named.reference.size();
            return true;
        }
    }
    return false;
}

}  // namespace intake
