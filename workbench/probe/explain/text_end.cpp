#include "workbench/probe/explain/text_end.h"

#include <algorithm>
#include <string>

#include "formats/text/trim.h"

namespace probe {

namespace {

std::string placeAt(std::size_t line, std::size_t column) {
    return "line " + std::to_string(line) + ", column " + std::to_string(column);
}

/// Columns are counted in bytes by some, in characters by others.
bool isEndOf(std::string_view place, std::string_view text) {
    const auto line = static_cast<std::size_t>(std::count(text.begin(), text.end(), '\n')) + 1;
    const std::string_view last = text.substr(text.rfind('\n') + 1);
    const auto characters =
        static_cast<std::size_t>(std::count_if(last.begin(), last.end(), [](char c) {
            return (static_cast<unsigned char>(c) & 0xC0) != 0x80;
        }));
    return place == placeAt(line, last.size() + 1) || place == placeAt(line, characters + 1);
}

}  // namespace

bool namesEnd(std::string_view place, std::string_view text) {
    return isEndOf(place, text) || isEndOf(place, intake::trimmedEnd(text, " \t\r\n"));
}

}  // namespace probe
