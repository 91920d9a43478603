#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace intake {

/// The most bytes that one UTF-16 unit can become.
constexpr size_t UTF8_BYTES_PER_UNIT = 3;

/// Writes the text in UTF-8 to `out`, which has room for UTF8_BYTES_PER_UNIT bytes a unit, and
/// returns their number. A surrogate without its other half becomes U+FFFD.
size_t toUtf8(std::u16string_view text, char* out);

std::string toUtf8(std::u16string_view text);

/// A byte that is no UTF-8 becomes U+FFFD.
std::u16string toUtf16(std::string_view text);

}  // namespace intake
