#pragma once

#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

#include "formats/workbook/SheetTable.h"

namespace intake {

/// Finds the rows of a table that hold a value in one column, so that a join need not look through
/// all rows for each row of the other table. Belongs to one thread; the table outlives it.
class ColumnIndex {
public:
    ColumnIndex(const SheetTable& table, size_t column);

    /// The positions of the rows that may hold a value equal to this one, in their order. All that
    /// are equal by any rule of SQLite's are among them: a text and the number that it spells, and
    /// texts of another case or with other blanks around them.
    std::span<const uint32_t> find(double number) const;
    std::span<const uint32_t> find(std::string_view text) const;

private:
    std::span<const uint32_t> findKey(uint64_t key) const;

    std::vector<uint64_t> keys_;  // in their order
    std::vector<uint32_t> positions_;
};

}  // namespace intake
