#pragma once

#include <algorithm>
#include <cstdint>

#include "pipeline/RequestRecord.h"

namespace intake {

/// The rows that a request asks for out of the rows that there are. Sums are in 64 bits: neither
/// number is trusted to be small or positive.
struct RowRange {
    int64_t from;  // as requested; may lie outside the rows
    int64_t end;   // one behind the last row to deliver

    RowRange(const RequestRecord& request, int64_t rowCount)
        : from(request.fromRow), end(std::min(from + request.numRows, rowCount)) {}

    /// The first row that exists; rows from here up to `end` are delivered, if any.
    int64_t first() const { return std::max<int64_t>(from, 0); }

    /// The count that the script reports: not clamped, so it can be negative.
    int64_t count() const { return end - from; }
};

}  // namespace intake
