#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

namespace intake {

/// What a byte can be in plain XML text of UTF-8.
enum XmlByte : uint8_t {
    NAME_START = 1,
    NAME_CHARACTER = 2,
    BLANK = 4,
    PLAIN_IN_TEXT = 8,
    PLAIN_IN_VALUE = 16,
};

constexpr std::array<uint8_t, 256> classifyXmlBytes() {
    std::array<uint8_t, 256> classes{};
    for (unsigned byte = 0; byte < 256; ++byte) {
        const bool letter = (byte >= 'a' && byte <= 'z') || (byte >= 'A' && byte <= 'Z');
        const bool digit = byte >= '0' && byte <= '9';
        const bool blank = byte == ' ' || byte == '\t' || byte == '\n';
        unsigned uses = 0;
        if (letter || byte == '_') {
            uses |= NAME_START | NAME_CHARACTER;
        }
        if (digit || byte == '-' || byte == '.') {
            uses |= NAME_CHARACTER;
        }
        if (blank) {
            uses |= BLANK | PLAIN_IN_TEXT;
        }
        if (byte >= ' ' && byte != '<' && byte != '&' && byte != 0x7F) {
            uses |= PLAIN_IN_TEXT | PLAIN_IN_VALUE;
        }
        classes[byte] = static_cast<uint8_t>(uses);
    }
    return classes;
}

inline constexpr std::array<uint8_t, 256> XML_BYTES = classifyXmlBytes();

inline bool isXmlByte(char byte, XmlByte use) {
    return (XML_BYTES[static_cast<unsigned char>(byte)] & use) != 0;
}

inline bool isNameStart(char byte) {
    return isXmlByte(byte, NAME_START);
}
inline bool isNameCharacter(char byte) {
    return isXmlByte(byte, NAME_CHARACTER);
}
inline bool isBlank(char byte) {
    return isXmlByte(byte, BLANK);
}
inline bool isPlainInText(char byte) {
    return isXmlByte(byte, PLAIN_IN_TEXT);
}
inline bool isPlainInValue(char byte) {
    return isXmlByte(byte, PLAIN_IN_VALUE);
}

/// Whether a text is well-formed UTF-8 of characters that XML allows.
bool isXmlUtf8(std::string_view text);

/// Decodes the reference at `at`, which a zero ends at the latest, appends its character and moves
/// behind it. False for any but the five that XML names and numbers of characters that it allows.
bool takeReference(const char*& at, std::string& out);

}  // namespace intake
