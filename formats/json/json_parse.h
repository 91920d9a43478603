#pragma once

#include <cstddef>
#include <vector>

#include "formats/json/JsonDocument.h"

namespace intake {

/// A character that the end of the text cuts off makes the parser look this far behind the end.
constexpr size_t BYTES_READ_BEHIND = 3;

/// Parses a JSON text in one pass, appending its nodes to `entries` and decoding its strings where
/// they stand. `text` ends with a zero byte that `size` counts, and BYTES_READ_BEHIND more bytes
/// are readable behind it. Throws std::invalid_argument with line, column (in bytes) and cause.
void parseJson(char* text, size_t size, std::vector<JsonEntry>& entries);

}  // namespace intake
