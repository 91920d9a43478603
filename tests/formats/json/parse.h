#pragma once

#include <string>
#include <string_view>

#include "formats/json/JsonDocument.h"

namespace intake {

/// Parses a text as the reader does: in a buffer with a zero byte behind it.
JsonDocument parse(std::string_view text);

/// Why the text is refused; "accepted" when it is not.
std::string parseError(std::string_view text);

/// The text as the only element of an array.
std::string inArray(std::string_view text);

/// A node with all that is below it: null, true, 7.50, "text", [1, 2], {name: 1, name: 2}.
std::string outline(const JsonDocument& document, JsonDocument::Node node = JsonDocument::ROOT);

}  // namespace intake
