#pragma once

#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

#include "formats/workbook/TextTable.h"
#include "formats/workbook/cell_reference.h"

namespace intake {

enum class CellKind : uint8_t { NUMBER, DATE, BOOLEAN, TEXT };

/// The value of a cell: `number` for all kinds but TEXT, 1 or 0 for BOOLEAN; a DATE is a serial day
/// number of the 1900 system.
struct Cell {
    CellKind kind = CellKind::NUMBER;
    double number = 0;
    std::string_view text;  // in UTF-8, lent by the sheet
};

/// The cells of a sheet that hold a value; ten bytes each, row by row. Filled by one thread, mostly
/// in the order of rows, then only read.
class Sheet {
public:
    /// A row that holds values.
    struct Row {
        uint32_t number;  // from 1
        uint32_t firstCell;
    };

    /// `shared` outlives this object.
    explicit Sheet(const TextTable& shared) : shared_(&shared) {}

    /// Forgets all cells, and makes room for about so many.
    void restart(size_t cells);

    /// Begins a row; of several with one number the last counts.
    void beginRow(uint32_t number);

    /// Each adds a cell to the row that was begun last.
    void addNumber(uint32_t column, CellKind kind, double number);
    void addText(uint32_t column, std::string_view text);

    /// Throws WorkbookFault when there is no such text.
    void addSharedText(uint32_t column, size_t number);

    /// An error value: blank, yet a part of what is used.
    void addBlank(uint32_t column);

    /// Ends the row that was begun last.
    void endRow();

    /// Ends the sheet: puts its rows in order.
    void end();

    /// The rectangle that holds all cells; nothing where there is none.
    std::optional<CellRange> usedRange() const;

    /// The last row of a range in which there is an error value; 0 when there is none.
    uint32_t lastBlankIn(const CellRange& range) const;

    const std::vector<Row>& rows() const { return rows_; }

    /// The cell of a row, by the row's position; false when it is blank.
    bool cell(size_t row, uint32_t column, Cell& cell) const;

    /// Calls `visit(column, kind)` for each cell of a row.
    template <class Visit>
    void forEachKind(size_t row, Visit visit) const {
        for (size_t i = rows_[row].firstCell; i < endOf(row); ++i) {
            visit(uint32_t{tags_[i].column}, static_cast<CellKind>(tags_[i].kind));
        }
    }

private:
    static constexpr CellRange NOTHING{MOST_ROWS, 0, MOST_COLUMNS, 0};

    struct Tag {
        uint16_t column : 14;
        uint16_t kind : 2;
    };
    struct Blank {
        uint32_t row;
        uint32_t column;
    };
    union Value {
        double number;
        uint64_t text;
    };

    void add(uint32_t column, CellKind kind, Value value);
    void throwIfFull(size_t cells) const;
    void use(uint32_t column);
    void sortRow();
    void append(const Sheet& other, size_t row);
    size_t endOf(size_t row) const {
        return row + 1 < rows_.size() ? rows_[row + 1].firstCell : tags_.size();
    }

    const TextTable* shared_;
    TextTable own_;
    std::vector<Row> rows_;
    std::vector<Tag> tags_;
    std::vector<Value> values_;
    std::vector<Blank> blanks_;
    uint32_t row_ = 0;    // begun last
    uint32_t last_ = 0;   // the lowest one of the sheet so far
    bool sorted_ = true;  // the cells of the row
    bool rowsSorted_ = true;
    CellRange used_ = NOTHING;
};

}  // namespace intake
