#include "tests/http/support/digest.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "tests/http/support/hashes.h"

namespace intake {

namespace {

std::string hexMd5(const std::string& text) {
    constexpr const char* DIGITS = "0123456789abcdef";
    std::string hex;
    for (const char character : md5(text)) {
        const auto byte = static_cast<unsigned char>(character);
        hex += {DIGITS[byte >> 4U], DIGITS[byte & 15U]};
    }
    return hex;
}

/// The value of one part of a header, without its quotes; empty when it is missing.
std::string partOf(const std::string& header, const std::string& name) {
    const std::string before = " " + name + "=";
    const size_t found = header.find(before);
    if (found == std::string::npos) {
        return "";
    }
    const size_t start = found + before.size() + (header[found + before.size()] == '"' ? 1 : 0);
    return header.substr(start,
                         std::min(header.find_first_of("\",", start), header.size()) - start);
}

}  // namespace

void expectDigestProof(const std::string& header, const std::string& uri) {
    EXPECT_TRUE(header.starts_with("Digest ")) << header;
    EXPECT_EQ(partOf(header, "username"), "designer");
    EXPECT_EQ(partOf(header, "nonce"), "n7");
    EXPECT_EQ(partOf(header, "uri"), uri);
    EXPECT_EQ(partOf(header, "response"),
              hexMd5(hexMd5("designer:stage:secret") + ":n7:" + partOf(header, "nc") + ":" +
                     partOf(header, "cnonce") + ":auth:" + hexMd5("GET:" + uri)));
}

}  // namespace intake
