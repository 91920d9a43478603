#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace intake {

/// Replaces the `_xHHHH_` by which a workbook writes characters that XML does not allow.
void decodeEscapes(std::string& text);

/// The number that a text is, blanks around it aside.
std::optional<double> parseNumber(std::string_view text);

/// The whole number from 0 that a text is.
std::optional<size_t> parseIndex(std::string_view text);

/// The serial day number, in the 1900 system, of a date of the form yyyy-mm-dd, of a time of day of
/// the form hh:mm[:ss[.fraction]], or of both with a T between them, with or without a Z behind it.
std::optional<double> parseIsoDate(std::string_view text);

/// The reverse: yyyy-mm-dd, and hh:mm:ss behind a blank unless the time is midnight. A number that
/// stands for no day is written as it is.
std::string isoDate(double serial);

}  // namespace intake
