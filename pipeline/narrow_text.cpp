#include "pipeline/narrow_text.h"

#include <algorithm>

namespace intake {

namespace {

bool isAscii(char byte) {
    return static_cast<unsigned char>(byte) < 0x80;
}

bool isContinuation(char byte) {
    return (static_cast<unsigned char>(byte) & 0xC0) == 0x80;
}

/// The ISO-8859-1 character of a sequence of two bytes or more.
char narrowed(unsigned char first, unsigned char second) {
    return first == 0xC2 || first == 0xC3 ? static_cast<char>((first << 6) | (second & 0x3F)) : '?';
}

}  // namespace

void narrowFrom(std::string& text, size_t start, int32_t encoding) {
    if (encoding != ENCODING_ISO_8859_1) {
        return;
    }
    const auto end = text.end();
    auto out = std::find_if_not(text.begin() + static_cast<ptrdiff_t>(start), end, isAscii);
    for (auto in = out; in != end;) {
        const char first = *in++;
        const char second = in == end ? '\0' : *in;
        *out++ = isAscii(first) ? first
                                : narrowed(static_cast<unsigned char>(first),
                                           static_cast<unsigned char>(second));
        in = isAscii(first) ? in : std::find_if_not(in, end, isContinuation);
    }
    text.erase(out, end);
}

std::string toUtf8(std::string_view text, int32_t encoding) {
    if (encoding != ENCODING_ISO_8859_1) {
        return std::string(text);
    }
    std::string wide;
    for (const char byte : text) {
        if (isAscii(byte)) {
            wide += byte;
            continue;
        }
        const auto character = static_cast<unsigned char>(byte);
        wide += static_cast<char>(0xC0 | (character >> 6));
        wide += static_cast<char>(0x80 | (character & 0x3F));
    }
    return wide;
}

}  // namespace intake
