#include "tests/http/support/hashes.h"

#include <windows.h>
// Builds on the former.
#include <bcrypt.h>

#include <array>

namespace intake {

namespace {

constexpr ULONG MD5_SIZE = 16;

PUCHAR bytesOf(std::string_view text) {
    return reinterpret_cast<PUCHAR>(const_cast<char*>(text.data()));
}

/// `flags` ask for a keyed hash, or not.
std::string hash(std::string_view key, std::string_view text, ULONG flags) {
    std::array<unsigned char, MD5_SIZE> digest{};
    BCRYPT_ALG_HANDLE algorithm = nullptr;
    BCRYPT_HASH_HANDLE hashing = nullptr;
    BCryptOpenAlgorithmProvider(&algorithm, BCRYPT_MD5_ALGORITHM, nullptr, flags);
    BCryptCreateHash(algorithm, &hashing, nullptr, 0, bytesOf(key), static_cast<ULONG>(key.size()),
                     0);
    BCryptHashData(hashing, bytesOf(text), static_cast<ULONG>(text.size()), 0);
    BCryptFinishHash(hashing, digest.data(), MD5_SIZE, 0);
    BCryptDestroyHash(hashing);
    BCryptCloseAlgorithmProvider(algorithm, 0);
    return {digest.begin(), digest.end()};
}

}  // namespace

std::string md5(std::string_view text) {
    return hash({}, text, 0);
}

std::string hmacMd5(std::string_view key, std::string_view text) {
    return hash(key, text, BCRYPT_ALG_HANDLE_HMAC_FLAG);
}

}  // namespace intake
