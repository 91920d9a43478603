// The encoding that `<?xml … encoding="…"?>` at a page's start names, as the HTML standard
// describes.

#include "formats/html/characters.h"
#include "formats/html/page_encoding.h"
#include "formats/text/trim.h"

namespace intake::html {

namespace {

/// The text in quotes at the start; empty when there is none.
std::string_view quotedText(std::string_view text) {
    if (!text.starts_with('"') && !text.starts_with('\'')) {
        return {};
    }
    const size_t end = text.find(text[0], 1);
    return end == std::string_view::npos ? std::string_view() : text.substr(1, end - 1);
}

}  // namespace

std::string_view encodingOfXmlDeclaration(std::string_view page) {
    constexpr std::string_view WORD = "encoding";
    const std::string_view declaration = page.substr(0, page.find('>'));
    const size_t word = declaration.find(WORD);
    if (!declaration.starts_with("<?xml") || word == std::string_view::npos) {
        return {};
    }
    const std::string_view rest = trimmedStart(declaration.substr(word + WORD.size()), WHITE_SPACE);
    return rest.starts_with('=')
               ? encodingOfLabel(quotedText(trimmedStart(rest.substr(1), WHITE_SPACE)))
               : std::string_view();
}

}  // namespace intake::html
