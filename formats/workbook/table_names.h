#pragma once

#include <optional>
#include <string_view>

#include "formats/workbook/WorkbookIndex.h"
#include "formats/workbook/cell_reference.h"

namespace intake {

/// The cells that a table of a query is: of a sheet, by its place in the workbook, the whole or a
/// rectangle.
struct TablePlace {
    size_t sheet;
    std::optional<CellRange> range;
};

/// Finds what a table's name stands for: `Sheet1$`, `Sheet1$B2:D20`, a name of the workbook, or
/// `Sheet1$Name` for a name of one sheet; all without regard to case, and with or without single
/// quotes around the sheet. Nothing where there is no such table.
std::optional<TablePlace> findTable(const WorkbookIndex& index, std::string_view name);

}  // namespace intake
