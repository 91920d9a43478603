#pragma once

#include <optional>
#include <string_view>

namespace intake {

/// The boolean that a word such as "yes" is, in upper or lower case.
std::optional<bool> truthOf(std::string_view word);

}  // namespace intake
