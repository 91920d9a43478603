#pragma once

#include <array>
#include <string_view>

namespace intake::html {

struct NamedReference {
    std::string_view name;  // with its semicolon, where that is needed
    std::string_view text;
};

/// The named character references of the HTML standard, sorted by name.
extern const std::array<NamedReference, 2231> NAMED_REFERENCES;

}  // namespace intake::html
