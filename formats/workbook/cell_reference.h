#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace intake {

constexpr uint32_t MOST_ROWS = 1048576;
constexpr uint32_t MOST_COLUMNS = 16384;

/// A rectangle of cells, with all its ends in it. Rows count from 1, columns from 0.
struct CellRange {
    uint32_t firstRow = 1;
    uint32_t lastRow = MOST_ROWS;
    uint32_t firstColumn = 0;
    uint32_t lastColumn = MOST_COLUMNS - 1;
    bool isOpenBelow = false;  // a row to begin with was named, and none to end with
    bool isOpenBeside = false;
};

/// The column of a cell's reference, such as 1 for B7; nothing where it has none or too high a one.
inline std::optional<uint32_t> columnOf(std::string_view reference) {
    uint32_t column = 0;
    for (const char character : reference) {
        const auto letter = static_cast<uint32_t>((character | 0x20) - 'a');
        if (letter >= 26) {
            break;
        }
        column = column * 26 + letter + 1;
        if (column > MOST_COLUMNS) {
            return {};
        }
    }
    return column == 0 ? std::nullopt : std::optional(column - 1);
}

/// The cells of B2:D20, of whole columns (B:D) or rows (2:20), of an open end (B2:D) or of a single
/// cell; with or without dollar signs. Its ends may stand in any order.
std::optional<CellRange> parseRange(std::string_view text);

}  // namespace intake
