#pragma once

#include <string>
#include <string_view>

namespace intake {

/// Conversions between the texts of this system, in UTF-16, and everybody else's. What is no text
/// in the encoding that it comes in becomes U+FFFD; what the target encoding lacks becomes "?".
std::wstring toWide(std::string_view utf8);
std::string toUtf8(std::wstring_view text);

/// Of a text in a code page, such as CP_UTF8 or 28591 for ISO-8859-1; CP_ACP is the one that the
/// system is set to.
std::wstring toWide(std::string_view text, unsigned codePage);

/// Appends a text in a code page.
void appendNarrow(std::wstring_view text, unsigned codePage, std::string& out);

}  // namespace intake
