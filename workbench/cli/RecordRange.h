#pragma once

#include <cstddef>
#include <limits>
#include <string>
#include <string_view>

namespace workbench {

/// How many records a user expects of a load.
struct RecordRange {
    static constexpr std::size_t unlimited = std::numeric_limits<std::size_t>::max();

    std::size_t least = 1;
    std::size_t most = unlimited;

    bool contains(std::size_t records) const { return least <= records && records <= most; }

    /// What was expected and what came, in a sentence.
    std::string complaint(std::size_t records) const;
};

/// Reads "N" or "N..M". Throws UsageError.
RecordRange readRecordRange(std::string_view text);

}  // namespace workbench
