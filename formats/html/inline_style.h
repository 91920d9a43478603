#pragma once

#include <string>
#include <string_view>

namespace intake::html {

/// The keyword that a style gives a property; empty when it gives it none. The last declaration
/// counts, but an important one before any other.
std::string keywordOf(std::string_view style, std::string_view property);

}  // namespace intake::html
