#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "formats/json/JsonDocument.h"
#include "formats/json/json_rows.h"

namespace intake {

/// Strings are read by eight bytes, so that the parser may look this far behind the end.
constexpr size_t BYTES_READ_BEHIND = 7;

/// Parses a JSON text in one pass, appending the nodes of the wanted rows to `entries` and decoding
/// all strings where they stand. Returns how many rows there were. `text` ends with a zero byte
/// that `size` counts, and BYTES_READ_BEHIND more bytes are readable behind it. Throws
/// std::invalid_argument with line, column (in bytes) and cause.
int64_t parseJson(char* text, size_t size, const JsonRowQuery& query,
                  std::vector<JsonEntry>& entries);

}  // namespace intake
