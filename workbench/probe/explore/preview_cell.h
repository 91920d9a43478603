#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace probe {

constexpr std::size_t mostPreviewed = 100;  // rows

/// A value as a preview shows it: its first 200 characters.
std::string previewCell(std::string_view value);

}  // namespace probe
