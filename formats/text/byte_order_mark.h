#pragma once

#include <array>
#include <string_view>

#include "formats/text/utf8.h"

namespace intake {

/// What a text begins with that says its encoding.
struct ByteOrderMark {
    std::string_view bytes;
    const char* encoding;
};

/// The mark that a text begins with; one of no bytes and without encoding when there is none.
constexpr ByteOrderMark byteOrderMarkOf(std::string_view text) {
    constexpr std::array<ByteOrderMark, 3> MARKS{{
        {UTF8_MARK, "UTF-8"},
        {"\xFF\xFE", "UTF-16LE"},
        {"\xFE\xFF", "UTF-16BE"},
    }};
    for (const ByteOrderMark& mark : MARKS) {
        if (text.starts_with(mark.bytes)) {
            return mark;
        }
    }
    return {"", nullptr};
}

}  // namespace intake
