#pragma once

#include <algorithm>
#include <cctype>
#include <string_view>

namespace intake {

inline bool isIdentifierCharacter(char character) {
    return std::isalnum(static_cast<unsigned char>(character)) != 0 || character == '_';
}

/// The first identifier of a text; empty when it does not begin with one.
inline std::string_view leadingIdentifier(std::string_view text) {
    const auto end = std::find_if_not(text.begin(), text.end(), isIdentifierCharacter);
    return {text.begin(), end};
}

inline std::string_view withoutLeadingBlanks(std::string_view text) {
    return text.substr(std::min(text.find_first_not_of(" \t"), text.size()));
}

/// A line for the preprocessor: `#name rest`. Without a name it is none.
struct Directive {
    explicit Directive(std::string_view line) {
        line = withoutLeadingBlanks(line);
        if (line.starts_with('#')) {
            line = withoutLeadingBlanks(line.substr(1));
            name = leadingIdentifier(line);
            rest = withoutLeadingBlanks(line.substr(name.size()));
        }
    }

    std::string_view name;
    std::string_view rest;
};

}  // namespace intake
