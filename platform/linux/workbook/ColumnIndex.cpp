#include "platform/linux/workbook/ColumnIndex.h"

#include <algorithm>
#include <bit>
#include <functional>
#include <utility>

#include "formats/text/ascii.h"
#include "formats/text/trim.h"
#include "formats/workbook/cell_text.h"

namespace intake {

namespace {

/// Different values may share a key; equal ones never differ in it.
uint64_t keyOf(double number) {
    return std::bit_cast<uint64_t>(number + 0.0);  // there is a negative zero, which is equal
}

uint64_t keyOf(std::string_view text) {
    if (const auto number = parseNumber(text)) {
        return keyOf(*number);
    }
    return std::hash<std::string>()(lowerCase(trimmed(text, " ")));
}

uint64_t keyOf(const Cell& cell) {
    return cell.kind == CellKind::TEXT ? keyOf(cell.text) : keyOf(cell.number);
}

}  // namespace

ColumnIndex::ColumnIndex(const SheetTable& table, size_t column) {
    std::vector<std::pair<uint64_t, uint32_t>> entries;
    Cell cell;
    const size_t end = table.position(table.endRow());
    for (size_t at = table.position(table.firstRow()); at < end; ++at) {
        if (table.value(at, column, cell)) {
            entries.emplace_back(keyOf(cell), static_cast<uint32_t>(at));
        }
    }
    std::sort(entries.begin(), entries.end());
    for (const auto& [key, position] : entries) {
        keys_.push_back(key);
        positions_.push_back(position);
    }
}

std::span<const uint32_t> ColumnIndex::find(double number) const {
    return findKey(keyOf(number));
}

std::span<const uint32_t> ColumnIndex::find(std::string_view text) const {
    return findKey(keyOf(text));
}

std::span<const uint32_t> ColumnIndex::findKey(uint64_t key) const {
    const auto [first, last] = std::equal_range(keys_.begin(), keys_.end(), key);
    return std::span(positions_)
        .subspan(static_cast<size_t>(first - keys_.begin()), static_cast<size_t>(last - first));
}

}  // namespace intake
