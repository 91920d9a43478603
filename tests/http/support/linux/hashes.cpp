#include "tests/http/support/hashes.h"

#include <openssl/evp.h>
#include <openssl/hmac.h>

#include <array>

namespace intake {

std::string md5(std::string_view text) {
    std::array<unsigned char, EVP_MAX_MD_SIZE> digest{};
    unsigned int size = 0;
    EVP_Digest(text.data(), text.size(), digest.data(), &size, EVP_md5(), nullptr);
    return {digest.begin(), digest.begin() + size};
}

std::string hmacMd5(std::string_view key, std::string_view text) {
    std::array<unsigned char, EVP_MAX_MD_SIZE> digest{};
    unsigned int size = 0;
    HMAC(EVP_md5(), key.data(), static_cast<int>(key.size()),
         reinterpret_cast<const unsigned char*>(text.data()), text.size(), digest.data(), &size);
    return {digest.begin(), digest.begin() + size};
}

}  // namespace intake
