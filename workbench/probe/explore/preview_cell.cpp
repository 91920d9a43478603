#include "workbench/probe/explore/preview_cell.h"

#include "formats/text/utf8.h"

namespace probe {

std::string previewCell(std::string_view value) {
    constexpr int most = 200;
    std::size_t length = 0;
    for (int i = 0; i < most && length < value.size(); ++i)
        length += intake::utf8CharacterAt(value.substr(length)).length;
    return std::string(value.substr(0, length)) + (length < value.size() ? "…" : "");
}

}  // namespace probe
