#include "formats/text/latin1.h"

#include <algorithm>

#include "formats/text/ascii.h"
#include "formats/text/utf8.h"

namespace intake {

namespace {

bool isContinuation(char byte) {
    return (static_cast<unsigned char>(byte) & 0xC0) == 0x80;
}

/// The ISO-8859-1 character of a sequence of two bytes or more.
char narrowed(unsigned char first, unsigned char second) {
    return first == 0xC2 || first == 0xC3 ? static_cast<char>((first << 6) | (second & 0x3F)) : '?';
}

}  // namespace

void narrowToLatin1(std::string& text, size_t start) {
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

std::string latin1ToUtf8(std::string_view text) {
    std::string utf8;
    utf8.reserve(text.size());
    for (const char byte : text) {
        appendUtf8(static_cast<unsigned char>(byte), utf8);
    }
    return utf8;
}

}  // namespace intake
