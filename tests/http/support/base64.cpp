#include "tests/http/support/base64.h"

#include <openssl/evp.h>

namespace intake {

std::string toBase64(std::string_view bytes) {
    std::string text(4 * ((bytes.size() + 2) / 3) + 1, '\0');
    const int length = EVP_EncodeBlock(reinterpret_cast<unsigned char*>(text.data()),
                                       reinterpret_cast<const unsigned char*>(bytes.data()),
                                       static_cast<int>(bytes.size()));
    text.resize(static_cast<size_t>(length));
    return text;
}

std::string fromBase64(std::string_view text) {
    std::string bytes(text.size(), '\0');
    const int length = EVP_DecodeBlock(reinterpret_cast<unsigned char*>(bytes.data()),
                                       reinterpret_cast<const unsigned char*>(text.data()),
                                       static_cast<int>(text.size()));
    const size_t padding = text.size() - std::min(text.find_last_not_of('=') + 1, text.size());
    bytes.resize(length < 0 ? 0 : static_cast<size_t>(length) - padding);
    return bytes;
}

}  // namespace intake
