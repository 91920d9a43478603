#pragma once

#include <string>
#include <string_view>

namespace intake {

// Numbers as the data store takes them: as a stream writes a double by default, in six significant
// digits, without zeros at the end.

void appendSixDigits(std::string& out, double number);

/// The same of a decimal number in the form of JSON's. What is beyond a double's range becomes inf
/// or 0.
void appendSixDigits(std::string& out, std::string_view decimal);

/// Whether a text is a decimal number in that form, and without an exponent.
bool isPlainDecimal(std::string_view text);

}  // namespace intake
