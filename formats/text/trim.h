#pragma once

#include <algorithm>
#include <string_view>

namespace intake {

/// White space of XML and of connection strings.
constexpr std::string_view XML_SPACE = " \t\r\n";

/// The text without those of `blanks` that stand at its start.
constexpr std::string_view trimmedStart(std::string_view text, std::string_view blanks) {
    return text.substr(std::min(text.find_first_not_of(blanks), text.size()));
}

/// The text without those of `blanks` that stand at its end.
constexpr std::string_view trimmedEnd(std::string_view text, std::string_view blanks) {
    return text.substr(0, text.find_last_not_of(blanks) + 1);
}

/// The text without those of `blanks` that stand at its ends.
constexpr std::string_view trimmed(std::string_view text, std::string_view blanks) {
    return trimmedEnd(trimmedStart(text, blanks), blanks);
}

}  // namespace intake
