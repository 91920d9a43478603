#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace cobalt {

/// The number that the whole of `text` writes in decimal, such as -7.50 or 1.2e+06; infinite when
/// it is beyond the range of a double. Nothing for any other text, "inf" and "nan" included.
std::optional<double> parseNumber(std::string_view text);

/// Writes a finite number with up to 15 significant digits, so that 0.1+0.2 reads 0.3.
std::string formatNumber(double number);

}  // namespace cobalt
