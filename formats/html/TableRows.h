#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "formats/html/Node.h"

namespace intake::html {

/// The rows of a table, found once: those of its heads, then those of its bodies, then those of its
/// feet. Borrows the page.
class TableRows {
public:
    explicit TableRows(const Node& table);

    size_t rowCount() const { return rows_.size(); }
    size_t cellCount(size_t row) const;

    /// Appends the inner text of a cell without the white space at its ends.
    void appendCellText(size_t row, size_t cell, std::string& out) const;

private:
    void addRowsOf(const Node& table, Tag section);
    void addRow(const Node& row);

    std::vector<size_t> rows_;        // where the cells of each begin
    std::vector<const Node*> cells_;  // row by row
};

}  // namespace intake::html
