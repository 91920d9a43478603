#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

namespace intake {

/// A stretch of the text that is no longer the source: a string that was decoded in place.
struct DecodedRange {
    size_t begin, end;
};

/// A place in the source; both count from 1, the column in bytes.
struct TextPosition {
    size_t line, column;
};

/// Where `offset` lies. Line ends inside decoded strings are not the source's and do not count.
/// `decoded` is in order.
TextPosition locate(std::string_view text, size_t offset, const std::vector<DecodedRange>& decoded);

}  // namespace intake
