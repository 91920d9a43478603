#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "workbench/probe/explain/Ladder.h"

namespace probe {

/// Which of the records that a selection gives are loaded.
struct RowRange {
    int64_t from = 0;
    int64_t count = 0;

    /// Whether the record at this position, counted from 0, is loaded.
    bool contains(std::size_t position) const {
        const auto at = static_cast<int64_t>(position);
        return at >= from && at - from < count;
    }
};

/// Those of a selection that are loaded.
template <class Record>
std::vector<Record> loadedOf(const std::vector<Record>& records, const RowRange& range) {
    std::vector<Record> loaded;
    for (std::size_t i = 0; i < records.size(); ++i) {
        if (range.contains(i)) loaded.push_back(records[i]);
    }
    return loaded;
}

/// What "From row" and "Number of rows" say, read as the plugin reads them.
RowRange rowRangeOf(const Settings& settings);

/// Notes what is wrong with the texts of the two.
void checkRowTexts(const Settings& settings, Ladder& ladder);

/// Notes how many of the source's records are loaded, and proposes to begin at the first when none
/// is. `thing` is what the source's records are called: "record", "row". Returns how many.
std::size_t checkRows(const Settings& settings, std::size_t records, const char* thing,
                      Ladder& ladder);

}  // namespace probe
