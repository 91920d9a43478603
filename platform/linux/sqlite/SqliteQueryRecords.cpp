#include "platform/linux/sqlite/SqliteQueryRecords.h"

#include "platform/linux/base/truth_words.h"

namespace intake {

namespace {

void makeBoolean(FieldValue& value) {
    if (value.type == VT_I8) {
        value.type = VT_BOOL;
        value.integer = value.integer != 0;
    } else if (value.type == VT_BSTR) {
        if (const auto truth = truthOf(value.text)) {
            value.type = VT_BOOL;
            value.integer = *truth;
        }
    }
}

void makeReal(FieldValue& value) {
    if (value.type == VT_I8) {
        value.type = VT_R8;
        value.number = static_cast<double>(value.integer);
    }
}

}  // namespace

SqliteQueryRecords::SqliteQueryRecords(SqliteStatement query, const char* source,
                                       const EndMark& endMark)
    : SqliteRecordset(std::move(query), source, endMark) {
    for (size_t field = 0; field < fieldCount(); ++field) {
        const char* const type = sqlite3_column_decltype(statement(), static_cast<int>(field));
        types_.push_back(declaredType(type == nullptr ? "" : type));
    }
}

bool SqliteQueryRecords::value(size_t field, FieldValue& value) {
    if (!SqliteRecordset::value(field, value)) {
        return false;
    }
    switch (types_[field]) {
        case DeclaredType::OWN:
            break;
        case DeclaredType::BOOLEAN:
            makeBoolean(value);
            break;
        case DeclaredType::REAL:
            makeReal(value);
            break;
        case DeclaredType::DATE:
            value.type = value.type == VT_NULL ? VT_NULL : VT_DATE;
            break;
    }
    return true;
}

}  // namespace intake
