#pragma once

#include <string>
#include <string_view>

namespace intake {

/// The charset parameter of a Content-Type, without quotes; empty when there is none.
std::string charsetOf(std::string_view mediaType);

}  // namespace intake
