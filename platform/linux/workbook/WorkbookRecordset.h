#pragma once

#include <sqlite3.h>

#include <memory>
#include <string>
#include <vector>

#include "platform/Database.h"
#include "platform/linux/workbook/sheet_module.h"

namespace intake {

/// Closes a statement.
struct FinalizeStatement {
    void operator()(sqlite3_stmt* statement) const { sqlite3_finalize(statement); }
};
using Statement = std::unique_ptr<sqlite3_stmt, FinalizeStatement>;

/// The records of a query over a workbook's sheets. A value that comes straight from a sheet's
/// column has the type of that column's cells; what is computed has SQLite's type.
class WorkbookRecordset final : public Recordset {
public:
    /// Runs the statement up to its first record. `modules` outlive this object.
    WorkbookRecordset(Statement statement, const std::vector<std::unique_ptr<SheetModule>>& modules,
                      const EndMark& endMark);

    size_t fieldCount() override { return fields_.size(); }
    std::string_view fieldName(size_t field) override { return fields_[field].name; }
    std::optional<size_t> findField(const std::string& name) override;

    void moveFirst() override;
    void moveNext() override;
    bool atEnd() override { return ended_; }
    bool value(size_t field, FieldValue& value) override;

private:
    struct Field {
        std::string name;
        VariantType integers;  // what 0 and 1 are; all others are VT_I8
        VariantType reals;     // what a floating-point number is
    };

    Field describe(int number, const std::vector<std::unique_ptr<SheetModule>>& modules) const;
    void step();
    void count(const FieldValue& value);

    Statement statement_;
    const EndMark& endMark_;
    std::vector<Field> fields_;
    bool ended_ = false;
    bool moved_ = false;   // beyond the first record
    uint64_t values_ = 0;  // given so far
    uint64_t blanks_ = 0;
};

}  // namespace intake
