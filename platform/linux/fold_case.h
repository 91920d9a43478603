#pragma once

#include <string>
#include <string_view>

namespace intake {

/// A UTF-8 text by which names of any script are compared without regard to case.
std::string foldCase(std::string_view text);

/// The same for ASCII letters alone.
std::string asciiLower(std::string_view text);

}  // namespace intake
