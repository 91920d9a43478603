#pragma once

#include <string_view>

namespace intake::html {

/// The encoding that browsers take a label for, by its name for iconv; empty when they know none.
/// The label is in lower case, and one word.
std::string_view encodingOfLabel(std::string_view label);

}  // namespace intake::html
