#include "formats/workbook/SheetTable.h"

#include <algorithm>

#include "formats/text/fold_case.h"
#include "formats/workbook/column_names.h"

namespace intake {

namespace {

/// The part of `range` that is worth reading: whole rows and columns end where the sheet's use
/// ends.
CellRange clipped(CellRange range, const CellRange& used) {
    if (!range.isOpenBeside && range.firstColumn == 0 && range.lastColumn == MOST_COLUMNS - 1) {
        range.firstColumn = used.firstColumn;
    }
    if (range.lastColumn == MOST_COLUMNS - 1) {
        range.lastColumn = std::max(range.firstColumn, used.lastColumn);
    }
    if (!range.isOpenBelow && range.firstRow == 1 && range.lastRow == MOST_ROWS) {
        range.firstRow = used.firstRow;
    }
    range.lastRow = std::min(range.lastRow, std::max(range.firstRow, used.lastRow));
    return range;
}

}  // namespace

SheetTable::SheetTable(const Sheet& sheet, const std::optional<CellRange>& range, bool header)
    : sheet_(sheet) {
    const CellRange empty{1, 1, 0, 0};
    const CellRange used = sheet.usedRange().value_or(empty);
    range_ = clipped(range.value_or(used), used);
    takeColumns(header);
    kinds_.resize(columns_.size());
    collectKinds(!range);
}

size_t SheetTable::position(uint32_t row) const {
    const auto& rows = sheet_.rows();
    const auto found = std::lower_bound(
        rows.begin(), rows.end(), row,
        [](const Sheet::Row& each, uint32_t wanted) { return each.number < wanted; });
    return static_cast<size_t>(found - rows.begin());
}

void SheetTable::takeColumns(bool header) {
    const size_t headerRow = position(range_.firstRow);
    const bool hasCells = header && isAt(headerRow, range_.firstRow);
    std::vector<std::optional<Cell>> cells(range_.lastColumn - range_.firstColumn + 1);
    for (size_t column = 0; hasCells && column < cells.size(); ++column) {
        Cell cell;
        if (value(headerRow, column, cell)) {
            cells[column] = cell;
        }
    }
    columns_ = columnNames(cells);
    for (size_t column = 0; column < columns_.size(); ++column) {
        places_.emplace(foldCase(columns_[column]), column);
    }
    range_.firstRow += header ? 1 : 0;
}

void SheetTable::collectKinds(bool wholeSheet) {
    uint32_t lastRow = std::max(range_.firstRow - 1, sheet_.lastBlankIn(range_));
    for (size_t at = position(range_.firstRow);
         at < sheet_.rows().size() && sheet_.rows()[at].number <= range_.lastRow; ++at) {
        sheet_.forEachKind(at, [&](uint32_t column, CellKind kind) {
            if (column >= range_.firstColumn && column <= range_.lastColumn) {
                Kinds& kinds = kinds_[column - range_.firstColumn];
                kinds.numbers |= kind == CellKind::NUMBER;
                kinds.dates |= kind == CellKind::DATE;
                kinds.booleans |= kind == CellKind::BOOLEAN;
                lastRow = std::max(lastRow, sheet_.rows()[at].number);
            }
        });
    }
    if (!wholeSheet || !sheet_.usedRange()) {
        range_.lastRow = lastRow;
    }
}

std::optional<size_t> SheetTable::findColumn(std::string_view name) const {
    const auto found = places_.find(foldCase(name));
    return found == places_.end() ? std::nullopt : std::optional(found->second);
}

}  // namespace intake
