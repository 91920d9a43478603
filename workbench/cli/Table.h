#pragma once

// A table for people to read: a title, a header, aligned columns. Plain values; any thread.

#include <cstddef>
#include <limits>
#include <string>
#include <vector>

namespace workbench {

inline constexpr std::size_t unlimited = std::numeric_limits<std::size_t>::max();

/// How much room there is to print in.
struct PageSize {
    std::size_t columns = 80;
    std::size_t rows = 40;       // of one table
    std::size_t cellWidth = 40;  // of the widest cell, but in the last column
};

struct Table {
    std::string title;
    std::vector<std::string> header;
    std::vector<std::vector<std::string>> rows;  // as wide as the header
    std::size_t rowsLeftOut = 0;                 // rows that exist but are not in `rows`

    /// The table in lines. Columns of numbers are right-aligned. Columns that do not fit beside the
    /// first ones are left out, and a last line says how many columns and rows are missing.
    std::string print(const PageSize& page) const;
};

}  // namespace workbench
