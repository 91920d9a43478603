#pragma once

#include <cstddef>
#include <vector>

#include "readers/json/JsonEntry.h"

namespace intake {

/// Parses a JSON text in one pass, appending its nodes to `entries` and decoding its strings where
/// they stand. `text` ends with a zero byte that `size` counts. Throws std::invalid_argument with
/// line, column (in bytes) and cause.
void parseJson(char* text, size_t size, std::vector<JsonEntry>& entries);

}  // namespace intake
