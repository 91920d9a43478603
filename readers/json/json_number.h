#pragma once

#include <string>
#include <string_view>

namespace intake {

/// Appends a number of a document, given as the characters of its source, as the data store takes
/// numbers: as a double with six significant digits; what is beyond a double's range becomes inf
/// or 0.
void appendJsonNumber(std::string& script, std::string_view source);

}  // namespace intake
