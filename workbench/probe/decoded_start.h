#pragma once

#include <string>
#include <string_view>

namespace probe {

/// The start of a text without its byte-order mark; one in UTF-16, with a mark or without, as
/// UTF-8. All else is as it is.
std::string decodedStart(std::string_view start);

}  // namespace probe
