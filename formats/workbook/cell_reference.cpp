#include "formats/workbook/cell_reference.h"

#include <charconv>
#include <utility>

namespace intake {

namespace {

bool isLetter(char character) {
    return (character >= 'a' && character <= 'z') || (character >= 'A' && character <= 'Z');
}

/// Takes the letters that `text` begins with.
std::optional<uint32_t> takeColumn(std::string_view& text) {
    const auto column = columnOf(text);
    while (column && !text.empty() && isLetter(text.front())) {
        text.remove_prefix(1);
    }
    return column;
}

std::optional<uint32_t> takeRow(std::string_view& text) {
    uint32_t row = 0;
    const auto parsed = std::from_chars(text.data(), text.data() + text.size(), row);
    if (parsed.ec != std::errc() || row == 0 || row > MOST_ROWS) {
        return {};
    }
    text.remove_prefix(static_cast<size_t>(parsed.ptr - text.data()));
    return row;
}

void skipDollar(std::string_view& text) {
    text.remove_prefix(text.starts_with('$') ? 1 : 0);
}

/// One end of a range; what it leaves open is empty.
struct RangeEnd {
    std::optional<uint32_t> column;
    std::optional<uint32_t> row;
};

std::optional<RangeEnd> parseEnd(std::string_view text) {
    RangeEnd end;
    skipDollar(text);
    end.column = takeColumn(text);
    if (end.column) {
        skipDollar(text);
    }
    end.row = takeRow(text);
    return text.empty() && (end.column || end.row) ? std::optional(end) : std::nullopt;
}

}  // namespace

std::optional<CellRange> parseRange(std::string_view text) {
    const size_t colon = text.find(':');
    const auto first = parseEnd(text.substr(0, colon));
    const auto last = colon == std::string_view::npos ? first : parseEnd(text.substr(colon + 1));
    if (!first || !last || (colon == std::string_view::npos && !(first->column && first->row))) {
        return {};
    }
    CellRange range;
    range.firstRow = first->row.value_or(range.firstRow);
    range.lastRow = last->row.value_or(range.lastRow);
    range.firstColumn = first->column.value_or(range.firstColumn);
    range.lastColumn = last->column.value_or(range.lastColumn);
    range.isOpenBelow = first->row && !last->row;
    range.isOpenBeside = first->column && !last->column;
    if (range.firstRow > range.lastRow) {
        std::swap(range.firstRow, range.lastRow);
    }
    if (range.firstColumn > range.lastColumn) {
        std::swap(range.firstColumn, range.lastColumn);
    }
    return range;
}

}  // namespace intake
