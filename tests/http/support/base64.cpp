#include "tests/http/support/base64.h"

#include <cstdint>

namespace intake {

namespace {

constexpr std::string_view DIGITS =
    "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";

}  // namespace

std::string toBase64(std::string_view bytes) {
    std::string text;
    for (size_t start = 0; start < bytes.size(); start += 3) {
        uint32_t group = 0;
        for (size_t i = start; i < start + 3; ++i) {
            group = group << 8U | (i < bytes.size() ? static_cast<unsigned char>(bytes[i]) : 0U);
        }
        for (unsigned shift = 24; shift > 0; shift -= 6) {
            text += DIGITS[group >> (shift - 6) & 63U];
        }
    }
    const size_t padding = (3 - bytes.size() % 3) % 3;
    return text.replace(text.size() - padding, padding, padding, '=');
}

std::string fromBase64(std::string_view text) {
    std::string bytes;
    uint32_t group = 0;
    unsigned bits = 0;
    for (const char digit : text.substr(0, text.find('='))) {
        group = group << 6U | static_cast<uint32_t>(DIGITS.find(digit));
        bits += 6;
        if (bits >= 8) {
            bits -= 8;
            bytes += static_cast<char>(group >> bits);
        }
    }
    return bytes;
}

}  // namespace intake
