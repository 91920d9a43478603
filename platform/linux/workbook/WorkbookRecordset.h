#pragma once

#include <memory>
#include <vector>

#include "platform/linux/sqlite/SqliteRecordset.h"
#include "platform/linux/workbook/sheet_module.h"

namespace intake {

/// The records of a query over a workbook's sheets. A value that comes straight from a sheet's
/// column has the type of that column's cells; what is computed has SQLite's type.
class WorkbookRecordset final : public SqliteRecordset {
public:
    /// Runs the statement up to its first record. `modules` outlive this object.
    WorkbookRecordset(SqliteStatement query,
                      const std::vector<std::unique_ptr<SheetModule>>& modules,
                      const EndMark& endMark);

    bool value(size_t field, FieldValue& value) override;

private:
    /// What the column behind a field holds.
    struct Column {
        bool booleans = false;  // 0 and 1 are booleans
        bool dates = false;     // a floating-point number is a date
    };

    Column describe(size_t field, const std::vector<std::unique_ptr<SheetModule>>& modules);
    void count(const FieldValue& value);

    std::vector<Column> columns_;
    uint64_t values_ = 0;  // given so far
    uint64_t blanks_ = 0;
};

}  // namespace intake
