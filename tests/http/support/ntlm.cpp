#include "tests/http/support/ntlm.h"

#include <gtest/gtest.h>

#include <string_view>

#include "tests/http/support/base64.h"
#include "tests/http/support/hashes.h"

namespace intake {

namespace {

constexpr std::string_view SIGNATURE("NTLMSSP\0", 8);
constexpr std::string_view CHALLENGE = "8 bytes!";
// Unicode, the target's name and its description come, NTLM, the extended session security.
constexpr uint32_t FLAGS = 0x1 | 0x4 | 0x200 | 0x80000 | 0x800000;

// MD4 of "secret" in UTF-16, which is what a server stores.
constexpr std::string_view STORED_PASSWORD(
    "\x87\x8d\x80\x14\x60\x6c\xda\x29\x67\x7a\x44\xef\xa1\x35\x3f\xc7", 16);

constexpr size_t NT_RESPONSE_FIELD = 20;
constexpr size_t DOMAIN_FIELD = 28;
constexpr size_t USER_FIELD = 36;
constexpr size_t PROOF_SIZE = 16;

std::string number(uint32_t value, size_t bytes) {
    std::string text;
    for (size_t i = 0; i < bytes; ++i) {
        text += static_cast<char>(value >> (8 * i));
    }
    return text;
}

uint32_t numberAt(std::string_view message, size_t offset, size_t bytes) {
    uint32_t value = 0;
    for (size_t i = 0; i < bytes && offset + i < message.size(); ++i) {
        value |= static_cast<uint32_t>(static_cast<unsigned char>(message[offset + i])) << (8 * i);
    }
    return value;
}

std::string utf16(std::string_view text) {
    std::string wide;
    for (const char character : text) {
        wide += {character, '\0'};
    }
    return wide;
}

/// A field: length, room and place of bytes elsewhere in the message.
std::string field(std::string_view bytes, uint32_t offset) {
    const auto size = static_cast<uint32_t>(bytes.size());
    return number(size, 2) + number(size, 2) + number(offset, 4);
}

std::string_view fieldAt(std::string_view message, size_t offset) {
    const size_t place = numberAt(message, offset + 4, 4);
    return place <= message.size() ? message.substr(place, numberAt(message, offset, 2)) : "";
}

/// The message of a header, of which signature and type are checked.
std::string expectMessage(const std::string& header, uint32_t type) {
    EXPECT_TRUE(header.starts_with("NTLM ")) << header;
    const std::string message = fromBase64(std::string_view(header).substr(5));
    EXPECT_EQ(message.substr(0, SIGNATURE.size()), SIGNATURE);
    EXPECT_EQ(numberAt(message, SIGNATURE.size(), 4), type);
    return message;
}

}  // namespace

std::string ntlmChallenge() {
    const std::string target = utf16("STAGE");
    const std::string description = number(2, 2) + number(10, 2) + target + number(0, 4);
    constexpr uint32_t HEADER_SIZE = 48;
    const auto targetEnd = static_cast<uint32_t>(HEADER_SIZE + target.size());
    return toBase64(std::string(SIGNATURE) + number(2, 4) + field(target, HEADER_SIZE) +
                    number(FLAGS, 4) + std::string(CHALLENGE) + std::string(8, '\0') +
                    field(description, targetEnd) + target + description);
}

void expectNtlmNegotiation(const std::string& header) {
    expectMessage(header, 1);
}

void expectNtlmProof(const std::string& header) {
    const std::string message = expectMessage(header, 3);
    EXPECT_EQ(fieldAt(message, USER_FIELD), utf16("designer"));

    const std::string_view response = fieldAt(message, NT_RESPONSE_FIELD);
    ASSERT_GT(response.size(), PROOF_SIZE);
    const std::string key =
        hmacMd5(STORED_PASSWORD, utf16("DESIGNER") + std::string(fieldAt(message, DOMAIN_FIELD)));
    EXPECT_EQ(response.substr(0, PROOF_SIZE),
              hmacMd5(key, std::string(CHALLENGE) + std::string(response.substr(PROOF_SIZE))));
}

}  // namespace intake
