#include "workbench/cobalt/ScriptError.h"

#include <algorithm>
#include <utility>

namespace cobalt {

namespace {

std::size_t countCharacters(std::string_view utf8) {
    const auto startsCharacter = [](char c) {
        return (static_cast<unsigned char>(c) & 0xC0) != 0x80;
    };
    return static_cast<std::size_t>(std::count_if(utf8.begin(), utf8.end(), startsCharacter));
}

}  // namespace

ScriptError errorAt(std::string_view text, std::size_t offset, std::string message) {
    const std::string_view before = text.substr(0, offset);
    const auto lineEnds = std::count(before.begin(), before.end(), '\n');
    const std::size_t lastLineEnd = before.rfind('\n');
    const std::string_view line =
        lastLineEnd == std::string_view::npos ? before : before.substr(lastLineEnd + 1);
    return {static_cast<std::size_t>(lineEnds) + 1, countCharacters(line) + 1, std::move(message)};
}

}  // namespace cobalt
