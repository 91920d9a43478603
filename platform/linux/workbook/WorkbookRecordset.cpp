#include "platform/linux/workbook/WorkbookRecordset.h"

#include <algorithm>
#include <utility>

#include "formats/text/ascii.h"
#include "platform/linux/workbook/query_errors.h"

namespace intake {

namespace {

const SheetModule* findModule(const std::vector<std::unique_ptr<SheetModule>>& modules,
                              const char* table) {
    const auto found = std::find_if(modules.begin(), modules.end(), [table](const auto& module) {
        return table != nullptr && equalIgnoringCase(module->name, table);
    });
    return found == modules.end() ? nullptr : found->get();
}

// A value in a far corner makes many blank ones of a sheet that holds next to nothing.
constexpr uint64_t MOST_BLANKS = uint64_t{8} << 20;
constexpr uint64_t BLANKS_BESIDE_A_VALUE = 100;  // beyond those

/// Whether an integer can be a boolean. A column of booleans goes on with counts after a UNION.
bool isTruth(const FieldValue& value) {
    return value.type == VT_I8 && (value.integer == 0 || value.integer == 1);
}

}  // namespace

WorkbookRecordset::WorkbookRecordset(SqliteStatement query,
                                     const std::vector<std::unique_ptr<SheetModule>>& modules,
                                     const EndMark& endMark)
    : SqliteRecordset(std::move(query), WORKBOOK_PROVIDER, endMark) {
    for (size_t field = 0; field < fieldCount(); ++field) {
        columns_.push_back(describe(field, modules));
    }
}

WorkbookRecordset::Column WorkbookRecordset::describe(
    size_t field, const std::vector<std::unique_ptr<SheetModule>>& modules) {
    const auto number = static_cast<int>(field);
    const char* const origin = sqlite3_column_origin_name(statement(), number);
    const auto* const module = findModule(modules, sqlite3_column_table_name(statement(), number));
    const auto column = module == nullptr ? std::nullopt : module->columnNamed(origin);
    if (!column) {
        return {};
    }
    if (name(field) == origin) {
        name(field) = module->table->columns()[*column];
    }
    return {module->table->hasBooleans(*column), module->table->isDate(*column)};
}

bool WorkbookRecordset::value(size_t field, FieldValue& value) {
    if (!SqliteRecordset::value(field, value)) {
        return false;
    }
    const Column& column = columns_[field];
    if (column.booleans && isTruth(value)) {
        value.type = VT_BOOL;
    } else if (column.dates && value.type == VT_R8) {
        value.type = VT_DATE;
    }
    count(value);
    return true;
}

void WorkbookRecordset::count(const FieldValue& value) {
    ++(value.type == VT_NULL ? blanks_ : values_);
    if (blanks_ > MOST_BLANKS + BLANKS_BESIDE_A_VALUE * values_) {
        throwQueryError("The records hold " + std::to_string(values_) + " values and more than " +
                        std::to_string(MOST_BLANKS) +
                        " blank ones; look for a value far below or beside the others, or load "
                        "fewer rows or columns");
    }
}

}  // namespace intake
