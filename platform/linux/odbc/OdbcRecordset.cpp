#include "platform/linux/odbc/OdbcRecordset.h"

#include <strings.h>

#include <algorithm>

#include "platform/linux/odbc/NeutralLocale.h"
#include "platform/linux/odbc/odbc_errors.h"

namespace intake {

OdbcRecordset::OdbcRecordset(OdbcHandle statement, const OdbcDriver& driver, const EndMark& endMark)
    : endMark_(endMark), statement_(std::move(statement)), driver_(driver) {
    describeColumns();
    moveNext();
}

void OdbcRecordset::describeColumns() {
    SQLSMALLINT count = 0;
    SQLNumResultCols(statement_.get(), &count);
    if (count <= 0) {
        throwNoRecords();
    }
    columns_.reserve(static_cast<size_t>(count));
    for (SQLUSMALLINT number = 1; number <= count; ++number) {
        columns_.emplace_back(statement_, number, driver_);
    }
    if (driver_.bindsColumns) {
        for (OdbcColumn& column : columns_) {
            column.bind();
        }
    }
}

std::optional<size_t> OdbcRecordset::findField(const std::string& name) {
    const auto column = std::find_if(columns_.begin(), columns_.end(), [&](const OdbcColumn& each) {
        return strcasecmp(each.name().c_str(), name.c_str()) == 0;
    });
    if (column == columns_.end()) {
        return std::nullopt;
    }
    return static_cast<size_t>(column - columns_.begin());
}

SQLRETURN OdbcRecordset::fetch() {
    const NeutralLocale locale;
    return SQLFetch(statement_.get());
}

void OdbcRecordset::moveNext() {
    if (endMark_.isSet()) {
        throwQueryGivenUp();
    }
    ++record_;
    read_ = 0;
    const SQLRETURN result = fetch();
    atEnd_ = result == SQL_NO_DATA;
    if (!atEnd_ && !SQL_SUCCEEDED(result)) {
        throwOdbcError(odbcErrors(statement_, driver_.narrow));
    }
}

bool OdbcRecordset::value(size_t field, FieldValue& value) {
    if (field >= columns_.size()) {
        return false;
    }
    if (!driver_.bindsColumns) {
        readUpTo(field);
    }
    columns_[field].value(record_, value);
    return true;
}

/// Not every driver gives the values of a record in any order, or twice.
void OdbcRecordset::readUpTo(size_t field) {
    for (; read_ <= field; ++read_) {
        columns_[read_].read();
    }
}

}  // namespace intake
