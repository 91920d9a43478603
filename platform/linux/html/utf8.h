#pragma once

#include <string>
#include <string_view>

namespace intake::html {

bool isValidUtf8(std::string_view text);

/// The text with U+FFFD for what is not UTF-8.
std::string withValidUtf8(std::string text);

}  // namespace intake::html
