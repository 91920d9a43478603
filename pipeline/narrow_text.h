#pragma once

// The 8-bit texts of requests and scripts, whose encoding a request names.

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace intake {

/// Turns what stands from `start` on from UTF-8 into the encoding of code `encoding`: 2 is
/// ISO-8859-1, with "?" for what it lacks; any other is UTF-8.
void narrowFrom(std::string& text, size_t start, int32_t encoding);

/// The text, given in the encoding of code `encoding`, in UTF-8.
std::string toUtf8(std::string_view text, int32_t encoding);

}  // namespace intake
