#include "formats/json/text_position.h"

namespace intake {

TextPosition locate(std::string_view text, size_t offset,
                    const std::vector<DecodedRange>& decoded) {
    size_t line = 1;
    size_t lineStart = 0;
    auto range = decoded.begin();
    for (size_t end = text.find('\n'); end < offset; end = text.find('\n', end + 1)) {
        while (range != decoded.end() && range->end <= end) {
            ++range;
        }
        if (range == decoded.end() || end < range->begin) {
            ++line;
            lineStart = end + 1;
        }
    }
    return {line, offset - lineStart + 1};
}

}  // namespace intake
