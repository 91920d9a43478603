#include "platform/linux/odbc/OdbcColumn.h"

#include <algorithm>
#include <cstring>

#include "platform/linux/odbc/NeutralLocale.h"
#include "platform/linux/odbc/loose_value.h"
#include "platform/linux/odbc/odbc_errors.h"
#include "platform/linux/odbc/utf16.h"

namespace intake {

namespace {

constexpr SQLLEN MOST_BOUND = 8192;  // what is longer is rare enough to be asked for again

SQLSMALLINT cTypeOf(OdbcFetch fetch, const OdbcDriver& driver) {
    if (driver.looselyTyped) {
        return SQL_C_CHAR;
    }
    switch (fetch) {
        case OdbcFetch::BOOLEAN:  // as a bit, MariaDB's driver does not say that it is not null
        case OdbcFetch::SIGNED:
            return SQL_C_SBIGINT;
        case OdbcFetch::UNSIGNED:
            return SQL_C_UBIGINT;
        case OdbcFetch::NUMBER:
            return SQL_C_DOUBLE;
        default:
            return driver.givesUtf8 ? SQL_C_CHAR : SQL_C_WCHAR;
    }
}

template <class Value>
Value valueIn(const std::vector<char>& bytes) {
    Value value;
    std::memcpy(&value, bytes.data(), sizeof value);
    return value;
}

}  // namespace

OdbcColumn::OdbcColumn(const OdbcStatement& statement, SQLUSMALLINT number)
    : statement_(statement), number_(number) {
    describe();
}

void OdbcColumn::describe() {
    check(describeColumn(statement_.handle().get(), number_, statement_.driver().narrow,
                         description_));
    SQLLEN isUnsigned = SQL_FALSE;
    SQLColAttribute(statement_.handle().get(), number_, SQL_DESC_UNSIGNED, nullptr, 0, nullptr,
                    &isUnsigned);
    type_ = typeOfSql(description_.type, isUnsigned == SQL_TRUE);
    cType_ = cTypeOf(type_.fetch, statement_.driver());
}

void OdbcColumn::check(SQLRETURN result) const {
    if (!SQL_SUCCEEDED(result)) {
        throwOdbcFailure(statement_.handle(), statement_.driver().narrow);
    }
}

void OdbcColumn::bind() {
    if (type_.fetch != OdbcFetch::NOTHING) {
        check(SQLBindCol(statement_.handle().get(), number_, cType_, cell_.bytes.data(),
                         static_cast<SQLLEN>(cell_.bytes.size()), &cell_.length));
    }
}

void OdbcColumn::read() {
    if (type_.fetch == OdbcFetch::NOTHING) {
        return;
    }
    if (isText()) {
        return readText(cell_);
    }
    check(getData(cell_, 0));
}

/// Puts the value, or its next part, behind the bytes that are filled.
SQLRETURN OdbcColumn::getData(Cell& cell, size_t filled) const {
    const NeutralLocale locale;
    return SQLGetData(statement_.handle().get(), number_, cType_, cell.bytes.data() + filled,
                      static_cast<SQLLEN>(cell.bytes.size() - filled), &cell.length);
}

bool OdbcColumn::isCut(SQLLEN length, SQLLEN room) const {
    return length == SQL_NO_TOTAL || length > room - unit();
}

/// The parts are joined before anything is made of them: they end anywhere, also within a
/// character.
void OdbcColumn::readText(Cell& cell) const {
    size_t filled = 0;
    while (readPart(cell, filled)) {
    }
    if (cell.length != SQL_NULL_DATA) {
        cell.length = static_cast<SQLLEN>(filled);
    }
}

/// False when this was the last part.
bool OdbcColumn::readPart(Cell& cell, size_t& filled) const {
    const SQLLEN room = static_cast<SQLLEN>(cell.bytes.size() - filled);
    const SQLRETURN result = getData(cell, filled);
    if (result == SQL_NO_DATA) {
        return false;
    }
    check(result);
    if (cell.length == SQL_NULL_DATA) {
        return false;
    }
    if (!isCut(cell.length, room)) {
        filled += static_cast<size_t>(cell.length);
        return false;
    }
    const SQLLEN whole = cell.length == SQL_NO_TOTAL ? 0 : cell.length + unit();
    const size_t needed = std::max(filled + static_cast<size_t>(whole), 2 * cell.bytes.size());
    filled += static_cast<size_t>(room - unit());
    cell.bytes.resize(needed);
    return true;
}

/// The text, asked for again when it was longer than what is bound.
const OdbcColumn::Cell& OdbcColumn::wholeText(uint64_t record) {
    if (wholeRecord_ == record) {
        return whole_;
    }
    if (!isCut(cell_.length, static_cast<SQLLEN>(cell_.bytes.size()))) {
        return cell_;
    }
    const size_t expected = static_cast<size_t>(std::max(cell_.length + unit(), MOST_BOUND));
    whole_.bytes.resize(std::max(whole_.bytes.size(), expected));
    readText(whole_);
    wholeRecord_ = record;
    widenBinding(whole_.length + unit());
    return whole_;
}

/// The next texts of the column may be as long.
void OdbcColumn::widenBinding(SQLLEN room) {
    if (room <= MOST_BOUND) {
        cell_.bytes.resize(std::max(2 * cell_.bytes.size(), static_cast<size_t>(room)));
        bind();
    }
}

std::string_view OdbcColumn::utf8Of(const Cell& cell) {
    const size_t bytes = static_cast<size_t>(cell.length);
    if (cType_ == SQL_C_CHAR) {
        return {cell.bytes.data(), bytes};
    }
    const size_t units = bytes / sizeof(char16_t);
    if (utf8_.size() < units * UTF8_BYTES_PER_UNIT) {
        utf8_.resize(std::max(units * UTF8_BYTES_PER_UNIT, 2 * utf8_.size()));
    }
    const auto* const text = reinterpret_cast<const char16_t*>(cell.bytes.data());
    return {utf8_.data(), toUtf8({text, units}, utf8_.data())};
}

void OdbcColumn::value(uint64_t record, FieldValue& value) {
    value.type = type_.variant;
    if (type_.fetch == OdbcFetch::NOTHING) {
        return;
    }
    if (cell_.length == SQL_NULL_DATA) {
        value.type = VT_NULL;
    } else if (!isText()) {
        numberIn(cell_, value);
    } else {
        value.text = utf8Of(wholeText(record));
        if (type_.fetch != OdbcFetch::TEXT) {
            readLooseValue(type_, value);
        }
    }
}

void OdbcColumn::numberIn(const Cell& cell, FieldValue& value) const {
    if (cType_ == SQL_C_DOUBLE) {
        value.number = valueIn<double>(cell.bytes);
    } else {
        value.integer = valueIn<int64_t>(cell.bytes);
    }
    if (type_.fetch == OdbcFetch::BOOLEAN) {
        value.integer = value.integer != 0;
    }
}

}  // namespace intake
