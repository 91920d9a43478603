#pragma once

#include <cstddef>
#include <string_view>

namespace intake {

/// Whether a number in this format is shown as a date, a time or a duration.
bool isDateFormat(std::string_view code);

/// The same for the formats that have a number and no code of their own in a workbook.
bool isBuiltInDateFormat(size_t number);

}  // namespace intake
