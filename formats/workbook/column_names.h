#pragma once

#include <optional>
#include <string>
#include <vector>

#include "formats/workbook/Sheet.h"

namespace intake {

/// The names of columns by the cells of a header row, in which nothing is a blank cell: that of the
/// third column is F3. White space is made one blank, square brackets become round, so that a query
/// can name them, and a number is put behind a name that was there already.
std::vector<std::string> columnNames(const std::vector<std::optional<Cell>>& header);

}  // namespace intake
