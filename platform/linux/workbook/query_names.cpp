#include "platform/linux/workbook/query_names.h"

#include "formats/text/ascii.h"

namespace intake {

namespace {

bool isWordCharacter(char character) {
    return isLetter(character) || isDigit(character) || character == '_' || character == '$' ||
           !isAscii(character);
}

char closingSign(char character) {
    switch (character) {
        case '[':
            return ']';
        case '"':
        case '`':
        case '\'':
            return character;
        default:
            return 0;
    }
}

/// The text up to the closing sign, which stands doubled (a bracket cannot) where it is meant.
std::string takeQuoted(std::string_view query, size_t& at, char closing) {
    std::string name;
    while (at < query.size()) {
        if (query[at] == closing &&
            (++at == query.size() || query[at] != closing || closing == ']')) {
            break;
        }
        name += query[at++];
    }
    return name;
}

}  // namespace

std::vector<std::string> namesIn(std::string_view query) {
    std::vector<std::string> names;
    for (size_t at = 0; at < query.size();) {
        const char closing = closingSign(query[at]);
        const size_t start = at++;
        if (closing != 0) {
            names.push_back(takeQuoted(query, at, closing));
        } else if (isWordCharacter(query[start])) {
            while (at < query.size() && isWordCharacter(query[at])) {
                ++at;
            }
            names.emplace_back(query.substr(start, at - start));
        }
    }
    return names;
}

}  // namespace intake
