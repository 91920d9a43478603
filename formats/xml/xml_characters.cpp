#include "formats/xml/xml_characters.h"

#include <charconv>
#include <cstring>

#include "formats/text/utf8.h"

namespace intake {

namespace {

struct NamedCharacter {
    std::string_view reference;
    char character;
};

constexpr std::array<NamedCharacter, 5> NAMED{
    {{"&amp;", '&'}, {"&lt;", '<'}, {"&gt;", '>'}, {"&quot;", '"'}, {"&apos;", '\''}}};

bool isXmlCharacter(char32_t character) {
    return character == '\t' || character == '\n' || character == '\r' ||
           (character >= 0x20 && character < 0xD800) ||
           (character >= 0xE000 && character < 0xFFFE) ||
           (character >= 0x10000 && character <= 0x10FFFF);
}

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

bool isXmlUtf8(std::string_view text) {
    while (!text.empty()) {
        const Utf8Character character = utf8CharacterAt(text);
        if (!character.isValid || !isXmlCharacter(character.code)) {
            return false;
        }
        text.remove_prefix(character.length);
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
