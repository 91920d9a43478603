#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace intake {

/// What a format shows of a number as a point in time: nothing, a time of day or a duration, or a
/// day.
enum class DateFormat : uint8_t { NONE, TIME, DAY };

DateFormat dateFormatOf(std::string_view code);

/// The same of the formats that have a number and no code of their own in a workbook.
DateFormat builtInDateFormat(size_t number);

}  // namespace intake
