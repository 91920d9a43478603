// Looks for the encoding before the page is parsed, as the HTML standard describes.

#include <algorithm>

#include "formats/html/Arena.h"
#include "formats/html/Tokenizer.h"
#include "formats/html/characters.h"
#include "formats/html/page_encoding.h"
#include "formats/text/trim.h"

namespace intake::html {

namespace {

/// Browsers look at the first kilobyte at least, and some of them further.
constexpr size_t LOOKED_AT = size_t{16} * 1024;

constexpr std::string_view CHARSET = "charset";

/// The charset of a `content` such as "text/html; charset=utf-8".
std::string_view charsetOfContent(std::string_view content) {
    for (; content.size() > CHARSET.size(); content.remove_prefix(1)) {
        if (!startsWithIgnoringCase(content, CHARSET)) {
            continue;
        }
        std::string_view rest = trimmedStart(content.substr(CHARSET.size()), WHITE_SPACE);
        if (!rest.starts_with('=')) {
            continue;
        }
        rest = trimmedStart(rest.substr(1), WHITE_SPACE);
        if (rest.starts_with('"') || rest.starts_with('\'')) {
            const size_t end = rest.find(rest[0], 1);
            return end == std::string_view::npos ? "" : rest.substr(1, end - 1);
        }
        return rest.substr(0, rest.find_first_of("\t\n\f\r ;"));
    }
    return {};
}

std::string_view labelOf(const Token& token) {
    std::string_view charset;
    std::string_view content;
    bool isContentType = false;
    for (const Attribute* each = token.attributes; each != nullptr; each = each->next) {
        if (each->name == CHARSET) {
            charset = each->value;
        } else if (each->name == "content") {
            content = charsetOfContent(each->value);
        } else if (each->name == "http-equiv") {
            isContentType = equalIgnoringCase(each->value, "content-type");
        }
    }
    return charset.empty() && isContentType ? content : charset;
}

}  // namespace

std::string_view encodingOfMeta(std::string_view page) {
    Arena arena;
    Tokenizer tokenizer(page.substr(0, LOOKED_AT), arena);
    Token token;
    do {
        tokenizer.next(token);
        const bool isRaw = token.isStartOf(Tag::SCRIPT, Tag::STYLE, Tag::TITLE);
        if (isRaw) {
            tokenizer.setTextMode(Tokenizer::TextMode::RAWTEXT, token.text);
        }
        const std::string_view encoding =
            token.isStart(Tag::META) ? encodingOfLabel(labelOf(token)) : "";
        if (!encoding.empty()) {
            return encoding;
        }
    } while (token.type != Token::END);
    return {};
}

}  // namespace intake::html
