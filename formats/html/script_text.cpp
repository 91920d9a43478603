#include "formats/html/script_text.h"

#include "formats/html/characters.h"

namespace intake::html {

bool isTagNamed(std::string_view text, std::string_view name) {
    if (!startsWithIgnoringCase(text, name) || text.size() == name.size()) {
        return false;
    }
    const char next = text[name.size()];
    return isSpace(next) || next == '/' || next == '>';
}

size_t scriptLength(std::string_view text) {
    enum { PLAIN, ESCAPED, DOUBLE_ESCAPED } state = PLAIN;
    for (size_t at = text.find_first_of("<-"); at < text.size();
         at = text.find_first_of("<-", at + 1)) {
        const std::string_view rest = text.substr(at);
        if (rest.starts_with("</") && isTagNamed(rest.substr(2), "script")) {
            if (state != DOUBLE_ESCAPED) {
                return at;
            }
            state = ESCAPED;
        } else if (state == PLAIN && rest.starts_with("<!--")) {
            state = ESCAPED;
            ++at;  // its dashes may belong to the end: <!-->
        } else if (state != PLAIN && rest.starts_with("-->")) {
            state = PLAIN;
        } else if (state == ESCAPED && isTagNamed(rest.substr(1), "script") && rest[0] == '<') {
            state = DOUBLE_ESCAPED;
        }
    }
    return text.size();
}

}  // namespace intake::html
