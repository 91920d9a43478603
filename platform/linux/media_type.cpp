#include "platform/linux/media_type.h"

#include <strings.h>

#include <algorithm>

namespace intake {

namespace {

constexpr std::string_view CHARSET = "charset=";
constexpr std::string_view BLANKS = " \t";

std::string_view withoutBlanks(std::string_view text) {
    text.remove_prefix(std::min(text.find_first_not_of(BLANKS), text.size()));
    return text.substr(0, text.find_last_not_of(BLANKS) + 1);
}

std::string_view withoutQuotes(std::string_view text) {
    const bool quoted = text.size() >= 2 && text.front() == '"' && text.back() == '"';
    return quoted ? text.substr(1, text.size() - 2) : text;
}

}  // namespace

std::string charsetOf(std::string_view mediaType) {
    for (size_t end = mediaType.find(';'); end != std::string_view::npos;
         end = mediaType.find(';')) {
        mediaType.remove_prefix(end + 1);
        const std::string_view parameter = withoutBlanks(mediaType.substr(0, mediaType.find(';')));
        if (strncasecmp(parameter.data(), CHARSET.data(),
                        std::min(parameter.size(), CHARSET.size())) == 0 &&
            parameter.size() > CHARSET.size()) {
            return std::string(withoutQuotes(parameter.substr(CHARSET.size())));
        }
    }
    return {};
}

}  // namespace intake
