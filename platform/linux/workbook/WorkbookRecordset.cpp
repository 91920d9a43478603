#include "platform/linux/workbook/WorkbookRecordset.h"

#include <algorithm>

#include "formats/text/ascii.h"
#include "formats/text/fold_case.h"
#include "platform/linux/base/com_failures.h"
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
bool isTruth(int64_t integer) {
    return integer == 0 || integer == 1;
}

}  // namespace

WorkbookRecordset::WorkbookRecordset(Statement statement,
                                     const std::vector<std::unique_ptr<SheetModule>>& modules,
                                     const EndMark& endMark)
    : statement_(std::move(statement)), endMark_(endMark) {
    const int count = sqlite3_column_count(statement_.get());
    for (int number = 0; number < count; ++number) {
        fields_.push_back(describe(number, modules));
    }
    step();
}

WorkbookRecordset::Field WorkbookRecordset::describe(
    int number, const std::vector<std::unique_ptr<SheetModule>>& modules) const {
    sqlite3_stmt* const statement = statement_.get();
    const char* const name = sqlite3_column_name(statement, number);
    Field field{name == nullptr ? "" : name, VT_I8, VT_R8};
    const char* const origin = sqlite3_column_origin_name(statement, number);
    const auto* const module = findModule(modules, sqlite3_column_table_name(statement, number));
    const auto column = module == nullptr ? std::nullopt : module->columnNamed(origin);
    if (column) {
        field.integers = module->table->hasBooleans(*column) ? VT_BOOL : VT_I8;
        field.reals = module->table->isDate(*column) ? VT_DATE : VT_R8;
        if (field.name == origin) {
            field.name = module->table->columns()[*column];
        }
    }
    return field;
}

std::optional<size_t> WorkbookRecordset::findField(const std::string& name) {
    const std::string wanted = foldCase(name);
    const auto found = std::find_if(fields_.begin(), fields_.end(), [&](const Field& field) {
        return foldCase(field.name) == wanted;
    });
    return found == fields_.end() ? std::nullopt
                                  : std::optional(static_cast<size_t>(found - fields_.begin()));
}

void WorkbookRecordset::moveFirst() {
    if (moved_) {
        sqlite3_reset(statement_.get());
        step();
        moved_ = false;
    }
}

void WorkbookRecordset::moveNext() {
    moved_ = true;
    step();
}

void WorkbookRecordset::step() {
    const int result = sqlite3_step(statement_.get());
    ended_ = result != SQLITE_ROW;
    if (ended_ && result != SQLITE_DONE) {
        raiseIfEnded(endMark_, WORKBOOK_PROVIDER);
        throwQueryError(std::string("The query failed: ") +
                        sqlite3_errmsg(sqlite3_db_handle(statement_.get())));
    }
}

bool WorkbookRecordset::value(size_t field, FieldValue& value) {
    sqlite3_value* const source = sqlite3_column_value(statement_.get(), static_cast<int>(field));
    switch (sqlite3_value_type(source)) {
        case SQLITE_INTEGER:
            value.integer = sqlite3_value_int64(source);
            value.type = isTruth(value.integer) ? fields_[field].integers : VT_I8;
            break;
        case SQLITE_FLOAT:
            value.type = fields_[field].reals;
            value.number = sqlite3_value_double(source);
            break;
        case SQLITE_TEXT: {
            value.type = VT_BSTR;
            // Asked for as bytes, a text is not copied to put a zero behind it.
            const auto* const text = static_cast<const char*>(sqlite3_value_blob(source));
            value.text = {text, static_cast<size_t>(sqlite3_value_bytes(source))};
            break;
        }
        case SQLITE_BLOB:
            value.type = VariantType{VT_ARRAY | VT_UI1};
            break;
        default:
            value.type = VT_NULL;
            break;
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
