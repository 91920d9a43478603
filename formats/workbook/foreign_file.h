#pragma once

#include <cstddef>
#include <string_view>

namespace intake {

/// How many bytes from a file's start foreignFileReason wants to see.
constexpr size_t FOREIGN_FILE_START = 1 << 20;

/// Why a file that begins like this is no workbook of zip form; null when it may be one.
const char* foreignFileReason(std::string_view start);

}  // namespace intake
