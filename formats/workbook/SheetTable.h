#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

#include "formats/workbook/Sheet.h"

namespace intake {

/// A sheet, or a rectangle of one, as a table: its columns have names, its rows are records. The
/// rows end with the last one that holds a value. Belongs to one thread; the sheet outlives it.
class SheetTable {
public:
    /// `header`: the first row names the columns; otherwise they are F1, F2…
    SheetTable(const Sheet& sheet, const std::optional<CellRange>& range, bool header);

    const std::vector<std::string>& columns() const { return columns_; }

    /// The column of that name, without regard to case.
    std::optional<size_t> findColumn(std::string_view name) const;

    /// Whether all the numbers of a column are dates.
    bool isDate(size_t column) const { return kinds_[column].dates && !kinds_[column].numbers; }
    bool hasBooleans(size_t column) const { return kinds_[column].booleans; }

    /// The records: the sheet's rows from firstRow() to before endRow().
    uint32_t firstRow() const { return range_.firstRow; }
    uint32_t endRow() const { return range_.lastRow + 1; }

    /// The position within the sheet of a row, or of the first one behind it that holds values.
    size_t position(uint32_t row) const;

    /// Whether there is a row at that position, and it is a record.
    bool hasRecordAt(size_t position) const {
        return position < sheet_.rows().size() && rowAt(position) < endRow();
    }

    /// Whether the row at that position is row `row`, rather than one behind it.
    bool isAt(size_t position, uint32_t row) const {
        return position < sheet_.rows().size() && sheet_.rows()[position].number == row;
    }

    /// The row at that position.
    uint32_t rowAt(size_t position) const { return sheet_.rows()[position].number; }

    /// The value of a column in the row at that position; false when it is blank.
    bool value(size_t position, size_t column, Cell& cell) const {
        return sheet_.cell(position, range_.firstColumn + static_cast<uint32_t>(column), cell);
    }

private:
    /// Which kinds of values a column holds.
    struct Kinds {
        bool numbers = false;
        bool dates = false;
        bool booleans = false;
    };

    void takeColumns(bool header);
    void collectKinds(bool wholeSheet);

    const Sheet& sheet_;
    CellRange range_;  // of the records
    std::vector<std::string> columns_;
    std::unordered_map<std::string, size_t> places_;  // of the columns, by their names in one case
    std::vector<Kinds> kinds_;
};

}  // namespace intake
