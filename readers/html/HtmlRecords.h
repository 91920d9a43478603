#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "pipeline/RequestRecord.h"
#include "pipeline/RowRange.h"
#include "pipeline/RowsLimit.h"
#include "pipeline/TargetModeWriter.h"
#include "platform/HtmlDocument.h"

namespace intake {

/// Writes the requested rows of a table as the records of a target mode. Row 0 names the fields,
/// and counts as a row. Made for one request; worker thread.
class HtmlRecords final : public TargetModeWriter {
public:
    /// All are borrowed and outlive this object; the script is appended to.
    HtmlRecords(HtmlTable& table, const RequestRecord& request, std::string& script);

    /// Writes nothing when the table has no more rows than are to be skipped, and nothing in a mode
    /// that does not exist. False, and a line in `error`, when the mode needs the key column and
    /// there is none, and when the script becomes larger than 250 MB.
    bool write(std::string& error);

private:
    static constexpr size_t MAX_MEGABYTES = 250;

    void readNames();
    bool findKeyColumn(std::string& error);

    void writeTable() override;
    void writeArray() override;
    void writeStructures() override;
    void writeFieldArray() override;
    void writeSharedMemory() override;

    void writeRecord(size_t row);
    void writeFields(size_t row);
    void writeCount();

    /// Appends the text of the row's cell in the key column; nothing when the row is too short.
    void writeKey(size_t row);

    /// Calls `each` with every row and its place among the delivered ones, from 0, as long as the
    /// script is not too large.
    template <class Each>
    void forEachRow(Each each) {
        for (int64_t row = rows_.first(); row < rows_.end && !limit_.isExceededBy(script_); ++row) {
            each(static_cast<size_t>(row), row - rows_.first());
        }
    }

    bool isLast(size_t row) const { return static_cast<int64_t>(row) + 1 == rows_.end; }

    HtmlTable& table_;
    const RequestRecord& request_;
    std::string& script_;
    const int64_t rowCount_;
    const RowRange rows_;
    const RowsLimit limit_{"HTML: The rows of the table", MAX_MEGABYTES};
    std::vector<std::string> names_;
    size_t keyColumn_ = 0;
};

}  // namespace intake
