#include "formats/text/media_type.h"

#include "formats/text/ascii.h"
#include "formats/text/trim.h"

namespace intake {

namespace {

constexpr std::string_view CHARSET = "charset=";
constexpr std::string_view BLANKS = " \t";

std::string_view withoutQuotes(std::string_view text) {
    const bool quoted = text.size() >= 2 && text.front() == '"' && text.back() == '"';
    return quoted ? text.substr(1, text.size() - 2) : text;
}

}  // namespace

std::string charsetOf(std::string_view mediaType) {
    for (size_t end = mediaType.find(';'); end != std::string_view::npos;
         end = mediaType.find(';')) {
        mediaType.remove_prefix(end + 1);
        const std::string_view parameter =
            trimmed(mediaType.substr(0, mediaType.find(';')), BLANKS);
        if (startsWithIgnoringCase(parameter, CHARSET) && parameter.size() > CHARSET.size()) {
            return std::string(withoutQuotes(parameter.substr(CHARSET.size())));
        }
    }
    return {};
}

}  // namespace intake
