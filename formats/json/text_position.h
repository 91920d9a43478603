#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

namespace intake {

/// A place in the source; both count from 1, the column in bytes.
struct TextPosition {
    size_t line, column;
};

/// Where `offset` lies in a text whose strings were decoded in place. `decodedLineFeeds` are the
/// offsets, in order, of the line feeds that came from escapes: they end no line of the source.
TextPosition locate(std::string_view text, size_t offset,
                    const std::vector<size_t>& decodedLineFeeds);

}  // namespace intake
