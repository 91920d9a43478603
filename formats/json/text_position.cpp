#include "formats/json/text_position.h"

#include <algorithm>

namespace intake {

TextPosition locate(std::string_view text, size_t offset,
                    const std::vector<size_t>& decodedLineFeeds) {
    size_t line = 1;
    size_t lineStart = 0;
    for (size_t end = text.find('\n'); end < offset; end = text.find('\n', end + 1)) {
        if (!std::binary_search(decodedLineFeeds.begin(), decodedLineFeeds.end(), end)) {
            ++line;
            lineStart = end + 1;
        }
    }
    return {line, offset - lineStart + 1};
}

}  // namespace intake
