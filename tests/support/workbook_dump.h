#pragma once

#include <string>

#include "formats/workbook/Workbook.h"

namespace intake {

/// All sheets of a workbook, and under each its cells that hold a value, one a line, row by row.
std::string dumpWorkbook(Workbook& workbook);

}  // namespace intake
