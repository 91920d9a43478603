#include "workbench/serve/WebMessage.h"

#include <algorithm>
#include <charconv>

#include "formats/text/ascii.h"

namespace serve {

bool NameOrder::operator()(std::string_view one, std::string_view other) const {
    return std::lexicographical_compare(
        one.begin(), one.end(), other.begin(), other.end(),
        [](char a, char b) { return intake::toLower(a) < intake::toLower(b); });
}

const std::string& WebRequest::header(std::string_view name) const {
    static const std::string none;
    const auto found = headers.find(name);
    return found == headers.end() ? none : found->second;
}

std::string WebRequest::parameter(std::string_view name) const {
    std::string_view rest = query;
    while (!rest.empty()) {
        const std::string_view pair = rest.substr(0, rest.find('&'));
        const auto equals = pair.find('=');
        if (decoded(pair.substr(0, equals), true) == name)
            return equals == std::string_view::npos ? "" : decoded(pair.substr(equals + 1), true);
        rest.remove_prefix(std::min(rest.size(), pair.size() + 1));
    }
    return "";
}

std::string decoded(std::string_view text, bool isQuery) {
    std::string result;
    for (std::size_t at = 0; at < text.size(); ++at) {
        unsigned char byte = 0;
        const char* const start = text.data() + at + 1;
        const bool isEscape = text[at] == '%' && at + 2 < text.size() &&
                              std::from_chars(start, start + 2, byte, 16).ptr == start + 2;
        if (isEscape) {
            result += static_cast<char>(byte);
            at += 2;
        } else {
            result += text[at] == '+' && isQuery ? ' ' : text[at];
        }
    }
    return result;
}

WebResponse refusal(unsigned status, std::string_view text) {
    WebResponse response;
    response.status = status;
    response.body = "{\"error\": \"" + std::string(text) + "\"}\n";
    return response;
}

}  // namespace serve
