#pragma once

#include <string_view>

#include "formats/html/Arena.h"

namespace intake::html {

enum class ReferencePlace { TEXT, ATTRIBUTE };

/// The text with its character references replaced, as the HTML standard says for that place. The
/// text itself when it has none.
std::string_view withoutReferences(std::string_view text, ReferencePlace place, Arena& arena);

/// The text with U+FFFD for every character U+0000. The text itself when it has none.
std::string_view withReplacedNulls(std::string_view text, Arena& arena);

}  // namespace intake::html
