#include "workbench/cobalt/Cursor.h"

#include <algorithm>

namespace cobalt {

namespace {

// What stands at the beginning of `rest`, up to the end of its line and short enough to be shown.
std::string described(std::string_view rest) {
    constexpr std::size_t most = 20;
    if (rest.empty()) return "the end of the text";
    if (rest.front() == '\r' || rest.front() == '\n') return "the end of the line";
    std::size_t length = std::min(rest.find_first_of("\r\n"), std::min(rest.size(), most));
    const auto insideCharacter = [](char c) {
        return (static_cast<unsigned char>(c) & 0xC0) == 0x80;
    };
    while (length < rest.size() && insideCharacter(rest[length]))
        ++length;
    return "'" + std::string(rest.substr(0, length)) + "'";
}

}  // namespace

void Cursor::failExpected(std::string_view expected) const {
    fail("expected " + std::string(expected) + ", found " + described(text_.substr(offset_)));
}

}  // namespace cobalt
