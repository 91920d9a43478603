#pragma once

#include <string>
#include <string_view>

namespace intake {

/// A text by which names of any script are compared without regard to case: its letters in lower
/// case. What is not UTF-8 stays as it is.
std::string foldCase(std::string_view text);

}  // namespace intake
