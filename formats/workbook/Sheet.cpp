#include "formats/workbook/Sheet.h"

#include <algorithm>
#include <numeric>
#include <string>
#include <utility>

#include "formats/workbook/WorkbookFault.h"

namespace intake {

namespace {

constexpr uint64_t OWN_TEXT = uint64_t{1} << 63;  // the text is the sheet's own

// Beyond it a host would run out of memory: as many as a sheet of all rows and 64 columns holds.
constexpr size_t MOST_CELLS = size_t{64} << 20;

constexpr size_t MOST_ROW_ENTRIES = size_t{2} * MOST_ROWS;  // where they are out of order

}  // namespace

void Sheet::restart(size_t cells) {
    own_.restart(0);
    rows_.clear();
    tags_.clear();
    values_.clear();
    blanks_.clear();
    tags_.reserve(cells);
    values_.reserve(cells);
    row_ = 0;
    last_ = 0;
    rowsSorted_ = true;
    used_ = NOTHING;
}

void Sheet::beginRow(uint32_t number) {
    if (number > MOST_ROWS) {
        throw WorkbookFault("has a row " + std::to_string(number) + ", beyond the last there is");
    }
    if (rows_.size() == MOST_ROW_ENTRIES) {
        throw WorkbookFault("names its rows more than twice");
    }
    row_ = number;
    rowsSorted_ = rowsSorted_ && number > last_;
    last_ = std::max(last_, number);
    rows_.push_back({number, static_cast<uint32_t>(tags_.size())});
    sorted_ = true;
}

void Sheet::use(uint32_t column) {
    used_.firstRow = std::min(used_.firstRow, row_);
    used_.lastRow = std::max(used_.lastRow, row_);
    used_.firstColumn = std::min(used_.firstColumn, column);
    used_.lastColumn = std::max(used_.lastColumn, column);
}

void Sheet::throwIfFull(size_t cells) const {
    if (cells == MOST_CELLS) {
        throw WorkbookFault("holds more than " + std::to_string(MOST_CELLS) + " cells");
    }
}

void Sheet::addBlank(uint32_t column) {
    throwIfFull(blanks_.size());
    use(column);
    blanks_.push_back({row_, column});
}

uint32_t Sheet::lastBlankIn(const CellRange& range) const {
    uint32_t last = 0;
    for (const Blank& each : blanks_) {
        const bool isInside = each.row >= range.firstRow && each.row <= range.lastRow &&
                              each.column >= range.firstColumn && each.column <= range.lastColumn;
        last = isInside ? std::max(last, each.row) : last;
    }
    return last;
}

void Sheet::add(uint32_t column, CellKind kind, Value value) {
    throwIfFull(tags_.size());
    use(column);
    const bool first = tags_.size() == rows_.back().firstCell;
    sorted_ = sorted_ && (first || tags_.back().column < column);
    Tag tag{};
    tag.column = static_cast<uint16_t>(column & (MOST_COLUMNS - 1));
    tag.kind = static_cast<uint16_t>(static_cast<unsigned>(kind) & 3U);
    tags_.push_back(tag);
    values_.push_back(value);
}

void Sheet::addNumber(uint32_t column, CellKind kind, double number) {
    add(column, kind, {.number = number});
}

void Sheet::addText(uint32_t column, std::string_view text) {
    add(column, CellKind::TEXT, {.text = own_.add(text) | OWN_TEXT});
}

void Sheet::addSharedText(uint32_t column, size_t number) {
    if (number >= shared_->size()) {
        throw WorkbookFault("has a cell in row " + std::to_string(row_) +
                            " that holds the shared text " + std::to_string(number) +
                            ", but there are only " + std::to_string(shared_->size()));
    }
    add(column, CellKind::TEXT, {.text = number});
}

void Sheet::endRow() {
    // One of a number that was there before takes the other's place also when it is empty.
    if (rows_.back().firstCell == tags_.size() && rowsSorted_) {
        rows_.pop_back();
    } else if (!sorted_) {
        sortRow();
    }
}

void Sheet::end() {
    if (rowsSorted_) {
        return;
    }
    std::vector<size_t> order(rows_.size());
    std::iota(order.begin(), order.end(), size_t{0});
    std::stable_sort(order.begin(), order.end(), [this](size_t one, size_t other) {
        return rows_[one].number < rows_[other].number;
    });
    Sheet sorted(*shared_);
    sorted.restart(tags_.size());
    for (size_t i = 0; i < order.size(); ++i) {
        const bool isLast =
            i + 1 == order.size() || rows_[order[i + 1]].number != rows_[order[i]].number;
        if (isLast) {
            sorted.append(*this, order[i]);
        }
    }
    for (const Blank& each : blanks_) {
        sorted.row_ = each.row;
        sorted.addBlank(each.column);
    }
    std::swap(sorted.own_, own_);
    *this = std::move(sorted);
}

void Sheet::append(const Sheet& other, size_t row) {
    beginRow(other.rows_[row].number);
    for (size_t cell = other.rows_[row].firstCell; cell < other.endOf(row); ++cell) {
        const Tag tag = other.tags_[cell];
        add(tag.column, static_cast<CellKind>(tag.kind), other.values_[cell]);
    }
    endRow();
}

/// Puts the row's cells in order. Of two in one column the first remains.
void Sheet::sortRow() {
    const size_t start = rows_.back().firstCell;
    std::vector<std::pair<Tag, Value>> cells;
    for (size_t i = start; i < tags_.size(); ++i) {
        cells.emplace_back(tags_[i], values_[i]);
    }
    std::stable_sort(cells.begin(), cells.end(), [](const auto& one, const auto& other) {
        return one.first.column < other.first.column;
    });
    tags_.resize(start);
    values_.resize(start);
    for (const auto& [tag, value] : cells) {
        if (tags_.size() == start || tags_.back().column != tag.column) {
            tags_.push_back(tag);
            values_.push_back(value);
        }
    }
}

std::optional<CellRange> Sheet::usedRange() const {
    return used_.lastRow == 0 ? std::nullopt : std::optional(used_);
}

bool Sheet::cell(size_t row, uint32_t column, Cell& cell) const {
    const size_t start = rows_[row].firstCell;
    const size_t end = endOf(row);
    // Mostly no cell of the row is missing.
    size_t at = start + column - std::min<uint32_t>(column, tags_[start].column);
    if (at >= end || tags_[at].column != column) {
        const auto found =
            std::lower_bound(tags_.begin() + static_cast<ptrdiff_t>(start),
                             tags_.begin() + static_cast<ptrdiff_t>(end), column,
                             [](const Tag& tag, uint32_t wanted) { return tag.column < wanted; });
        at = static_cast<size_t>(found - tags_.begin());
        if (at == end || tags_[at].column != column) {
            return false;
        }
    }
    cell.kind = static_cast<CellKind>(tags_[at].kind);
    if (cell.kind != CellKind::TEXT) {
        cell.number = values_[at].number;
        return true;
    }
    const uint64_t text = values_[at].text;
    cell.text = (text & OWN_TEXT) != 0 ? own_[text & ~OWN_TEXT] : (*shared_)[text];
    return true;
}

}  // namespace intake
