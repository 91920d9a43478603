#include "platform/linux/sqlite/SqliteRecordset.h"

#include <algorithm>
#include <new>
#include <utility>

#include "formats/text/fold_case.h"
#include "platform/linux/base/OpenConnection.h"
#include "platform/linux/sqlite/SqliteError.h"

namespace intake {

namespace {

/// The text as it lies in the record: asked for as bytes, it is not copied to put a zero behind it.
std::string_view textOf(sqlite3_value* value) {
    const bool isUtf8 = sqlite3_value_encoding(value) == SQLITE_UTF8;
    const void* const text = isUtf8 ? sqlite3_value_blob(value) : sqlite3_value_text(value);
    if (text == nullptr && !isUtf8) {
        throw std::bad_alloc();  // it was to be converted
    }
    const std::string_view whole(static_cast<const char*>(text),
                                 static_cast<size_t>(sqlite3_value_bytes(value)));
    return whole.substr(0, whole.find('\0'));  // at which a script would end
}

}  // namespace

SqliteRecordset::SqliteRecordset(SqliteStatement statement, const char* source,
                                 const EndMark& endMark)
    : statement_(std::move(statement)), source_(source), endMark_(endMark) {
    step();  // may prepare the statement anew, with other columns
    const int count = statement_.columnCount();
    for (int column = 0; column < count; ++column) {
        const char* const name = sqlite3_column_name(statement_.get(), column);
        names_.emplace_back(name == nullptr ? "" : name);
    }
}

std::optional<size_t> SqliteRecordset::findField(const std::string& name) {
    const std::string wanted = foldCase(name);
    const auto found = std::find_if(names_.begin(), names_.end(), [&](const std::string& each) {
        return foldCase(each) == wanted;
    });
    return found == names_.end() ? std::nullopt
                                 : std::optional(static_cast<size_t>(found - names_.begin()));
}

void SqliteRecordset::moveFirst() {
    if (moved_) {
        statement_.reset();
        step();
        moved_ = false;
    }
}

void SqliteRecordset::moveNext() {
    moved_ = true;
    step();
}

void SqliteRecordset::step() {
    raiseIfEnded(endMark_, source_);
    try {
        ended_ = !statement_.step();
    } catch (const SqliteError& error) {
        throwReported(ERRORS_IN_COMMAND, source_, std::string("The query failed: ") + error.what());
    } catch (const GivenUp&) {
        raiseGivenUp(source_);
    }
}

bool SqliteRecordset::value(size_t field, FieldValue& value) {
    if (field >= names_.size()) {
        return false;
    }
    sqlite3_value* const source = sqlite3_column_value(statement_.get(), static_cast<int>(field));
    switch (sqlite3_value_type(source)) {
        case SQLITE_INTEGER:
            value.type = VT_I8;
            value.integer = sqlite3_value_int64(source);
            break;
        case SQLITE_FLOAT:
            value.type = VT_R8;
            value.number = sqlite3_value_double(source);
            break;
        case SQLITE_TEXT:
            value.type = VT_BSTR;
            value.text = textOf(source);
            break;
        case SQLITE_BLOB:
            value.type = VariantType{VT_ARRAY | VT_UI1};
            break;
        default:
            value.type = VT_NULL;
            break;
    }
    return true;
}

}  // namespace intake
