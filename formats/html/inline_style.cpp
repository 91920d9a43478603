#include "formats/html/inline_style.h"

#include <algorithm>

#include "formats/html/characters.h"
#include "formats/text/trim.h"

namespace intake::html {

namespace {

constexpr std::string_view COMMENT = "/*";

/// The style with a blank for each comment.
std::string withoutComments(std::string_view style) {
    std::string rest;
    while (!style.empty()) {
        const size_t start = std::min(style.find(COMMENT), style.size());
        rest.append(style.substr(0, start));
        style.remove_prefix(start);
        if (!style.empty()) {
            rest.append(" ");
            const size_t end = style.find("*/", 2);
            style.remove_prefix(end == std::string_view::npos ? style.size() : end + 2);
        }
    }
    return rest;
}

struct Declaration {
    std::string_view property;
    std::string_view keyword;
    bool isImportant = false;
};

Declaration declarationOf(std::string_view text) {
    const size_t colon = text.find(':');
    if (colon == std::string_view::npos) {
        return {};
    }
    const std::string_view value = text.substr(colon + 1);
    const size_t mark = std::min(value.find('!'), value.size());
    return {trimmed(text.substr(0, colon), WHITE_SPACE),
            trimmed(value.substr(0, mark), WHITE_SPACE), mark < value.size()};
}

}  // namespace

std::string keywordOf(std::string_view style, std::string_view property) {
    if (style.find(COMMENT) != std::string_view::npos) {
        return keywordOf(withoutComments(style), property);
    }
    std::string_view rest = style;
    Declaration counting;
    while (!rest.empty()) {
        const std::string_view each = rest.substr(0, rest.find(';'));
        rest.remove_prefix(std::min(each.size() + 1, rest.size()));
        const Declaration declaration = declarationOf(each);
        const bool counts = declaration.isImportant || !counting.isImportant;
        if (counts && equalIgnoringCase(declaration.property, property)) {
            counting = declaration;
        }
    }
    return std::string(counting.keyword);
}

}  // namespace intake::html
