#pragma once

#include <cstddef>
#include <string_view>

namespace intake::html {

/// Whether a text begins with the name, in lower case, of a tag and an end of it.
bool isTagNamed(std::string_view text, std::string_view name);

/// How much of a text, which begins inside a script element, belongs to it: up to its end tag, or
/// all. An end tag inside a commented-out script is not it.
size_t scriptLength(std::string_view text);

}  // namespace intake::html
