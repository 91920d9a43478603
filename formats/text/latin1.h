#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace intake {

/// Turns what stands from `start` on from UTF-8 into ISO-8859-1, with "?" for every character that
/// it lacks.
void narrowToLatin1(std::string& text, size_t start);

/// A text in ISO-8859-1, in UTF-8.
std::string latin1ToUtf8(std::string_view text);

}  // namespace intake
