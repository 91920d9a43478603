#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "platform/Database.h"
#include "platform/linux/odbc/OdbcStatement.h"
#include "platform/linux/odbc/odbc_calls.h"
#include "platform/linux/odbc/odbc_types.h"

namespace intake {

/// One column of a result, with the value of the current record. Owned by its recordset, whose
/// statement it borrows. What fails throws PlatformError.
class OdbcColumn {
public:
    /// Columns count from 1.
    OdbcColumn(const OdbcStatement& statement, SQLUSMALLINT number);

    const std::string& name() const { return description_.name; }

    /// Lets every fetch from now on put the value here, if it is of use.
    void bind();

    /// Reads the value of a column that is not bound; those of the columns before it come first.
    void read();

    /// The value of the record of this number, to which the statement has come. Views of it hold
    /// until the next fetch.
    void value(uint64_t record, FieldValue& value);

private:
    static constexpr size_t FIRST_ROOM = 128;

    /// A value as the driver gives it.
    struct Cell {
        std::vector<char> bytes = std::vector<char>(FIRST_ROOM);
        SQLLEN length = SQL_NULL_DATA;
    };

    void check(SQLRETURN result) const;
    void describe();
    bool isText() const { return cType_ == SQL_C_CHAR || cType_ == SQL_C_WCHAR; }
    SQLLEN unit() const { return cType_ == SQL_C_WCHAR ? sizeof(SQLWCHAR) : 1; }
    bool isCut(SQLLEN length, SQLLEN room) const;

    SQLRETURN getData(Cell& cell, size_t filled) const;
    void readText(Cell& cell) const;
    bool readPart(Cell& cell, size_t& filled) const;
    const Cell& wholeText(uint64_t record);
    void widenBinding(SQLLEN room);

    std::string_view utf8Of(const Cell& cell);
    void numberIn(const Cell& cell, FieldValue& value) const;

    const OdbcStatement& statement_;
    SQLUSMALLINT number_;
    OdbcColumnDescription description_;
    OdbcType type_{VT_BSTR, OdbcFetch::TEXT};
    SQLSMALLINT cType_ = SQL_C_CHAR;

    Cell cell_;   // bound or read
    Cell whole_;  // a text that was longer than what is bound
    uint64_t wholeRecord_ = 0;
    std::vector<char> utf8_;
};

}  // namespace intake
