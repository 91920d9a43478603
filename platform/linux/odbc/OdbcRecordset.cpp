#include "platform/linux/odbc/OdbcRecordset.h"

#include <algorithm>

#include "formats/text/fold_case.h"
#include "platform/linux/base/com_failures.h"
#include "platform/linux/odbc/odbc_errors.h"

namespace intake {

OdbcRecordset::OdbcRecordset(const OdbcSession& session, const OdbcDriver& driver,
                             const std::string& query, const EndMark& endMark,
                             std::chrono::milliseconds limit)
    : statement_(session, driver, endMark, limit) {
    statement_.execute(query);
    describeColumns();
    moveNext();
}

void OdbcRecordset::describeColumns() {
    SQLSMALLINT count = 0;
    SQLNumResultCols(statement_.handle().get(), &count);
    if (count <= 0) {
        OBJECT_CLOSED.raise(ODBC_SOURCE, "The statement does not return records.");
    }
    columns_.reserve(static_cast<size_t>(count));
    for (SQLUSMALLINT number = 1; number <= count; ++number) {
        columns_.emplace_back(statement_, number);
    }
    if (const SQLULEN records = statement_.driver().boundRecords; records > 0) {
        bindColumns(records);
    }
}

void OdbcRecordset::bindColumns(SQLULEN records) {
    if (records > 1) {
        statement_.takeAtATime(records);
    }
    for (OdbcColumn& column : columns_) {
        column.bind(records);
    }
}

std::optional<size_t> OdbcRecordset::findField(const std::string& name) {
    const std::string wanted = foldCase(name);
    const auto column = std::find_if(columns_.begin(), columns_.end(), [&](const OdbcColumn& each) {
        return foldCase(each.name()) == wanted;
    });
    if (column == columns_.end()) {
        return std::nullopt;
    }
    return static_cast<size_t>(column - columns_.begin());
}

void OdbcRecordset::moveNext() {
    ++record_;
    read_ = 0;
    if (++place_ >= fetched_) {
        place_ = 0;
        fetchMore();
    }
}

void OdbcRecordset::fetchMore() {
    for (OdbcColumn& column : columns_) {
        column.improveBinding();
    }
    fetched_ = statement_.fetch();
    atEnd_ = fetched_ == 0;
}

bool OdbcRecordset::value(size_t field, FieldValue& value) {
    if (field >= columns_.size()) {
        return false;
    }
    if (statement_.driver().boundRecords == 0) {
        readUpTo(field);
    }
    columns_[field].value(record_, place_, value);
    return true;
}

/// Not every driver gives the values of a record in any order, or twice.
void OdbcRecordset::readUpTo(size_t field) {
    for (; read_ <= field; ++read_) {
        columns_[read_].read();
    }
}

}  // namespace intake
