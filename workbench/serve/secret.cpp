#include "workbench/serve/secret.h"

#include <random>

namespace serve {

std::string newSecret() {
    constexpr std::string_view digits = "0123456789abcdef";
    constexpr std::size_t count = 64;
    std::random_device source;
    std::string text;
    while (text.size() < count) {
        for (unsigned bits = source(), i = 0; i < 8; ++i, bits >>= 4)
            text += digits[bits & 15];
    }
    return text;
}

bool isSecret(std::string_view text, std::string_view secret) {
    if (text.size() != secret.size()) return false;
    unsigned difference = 0;
    for (std::size_t i = 0; i < text.size(); ++i)
        difference |= static_cast<unsigned char>(text[i]) ^ static_cast<unsigned char>(secret[i]);
    return difference == 0;
}

}  // namespace serve
