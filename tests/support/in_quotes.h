#pragma once

#include <string>
#include <string_view>

namespace intake {

/// A text in quotes and on one line.
inline std::string inQuotes(std::string_view text) {
    std::string out = "\"";
    for (const char character : text) {
        switch (character) {
            case '\n':
                out += "\\n";
                break;
            case '"':
            case '\\':
                out += '\\';
                [[fallthrough]];
            default:
                out += character;
        }
    }
    return out + "\"";
}

}  // namespace intake
