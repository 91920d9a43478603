#pragma once

#include <string>
#include <string_view>

namespace workbench {

/// The text as UTF-8: as it is when it is valid, otherwise each byte read as ISO-8859-1 (a host
/// whose font encoding is ISO-8859-1 holds such texts).
std::string toUtf8(std::string_view text);

/// How many columns of a terminal a UTF-8 text takes.
std::size_t displayWidth(std::string_view text);

/// The text on one line: control characters become blanks.
std::string printable(std::string_view text);

/// The text on one line, and in at most `width` columns: control characters become blanks, what
/// does not fit is cut and marked with an ellipsis.
std::string fitted(std::string_view text, std::size_t width);

}  // namespace workbench
