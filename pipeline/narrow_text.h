#pragma once

// The 8-bit texts of requests and scripts, whose encoding a request names.

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace intake {

/// The code of ISO-8859-1 in a request; any other is UTF-8.
constexpr int32_t ENCODING_ISO_8859_1 = 2;

/// Turns what stands from `start` on from UTF-8 into the encoding of code `encoding`, with "?" for
/// what ISO-8859-1 lacks.
void narrowFrom(std::string& text, size_t start, int32_t encoding);

/// The text, given in the encoding of code `encoding`, in UTF-8.
std::string toUtf8(std::string_view text, int32_t encoding);

}  // namespace intake
