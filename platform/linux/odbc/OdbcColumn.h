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

/// One column of a result, with its values of the records that were fetched together. Owned by its
/// recordset, whose statement it borrows. What fails throws PlatformError.
class OdbcColumn {
public:
    /// Columns count from 1.
    OdbcColumn(const OdbcStatement& statement, SQLUSMALLINT number);

    const std::string& name() const { return description_.name; }

    /// Lets every fetch from now on put the values of so many records here, if they are of use.
    void bind(SQLULEN records);

    /// To be called before each fetch: makes room where a text did not fit, and lets the driver
    /// read numbers that we could not.
    void improveBinding() {
        if (neededRoom_ > bound_.room || hasOddNumbers_) {
            bindAnew();
        }
    }

    /// Reads the value of a column that is not bound; those of the columns before it come first.
    void read();

    /// The value of the record of this number, which has this place among those that were fetched
    /// together. Views of it hold until the next record.
    void value(uint64_t record, SQLULEN place, FieldValue& value);

private:
    /// A value as the driver gives it.
    struct Cell {
        const char* bytes;
        SQLLEN length;
    };

    /// Where a fetch puts the values.
    struct Bound {
        size_t room = 0;  // for each
        std::vector<char> bytes;
        std::vector<SQLLEN> lengths;
    };

    /// A text that was asked for alone, as long as it may be.
    struct Asked {
        std::vector<char> bytes;
        SQLLEN length = SQL_NULL_DATA;
    };

    void check(SQLRETURN result) const;
    void describe();
    void bindAnew();
    bool isText() const { return cType_ == SQL_C_CHAR || cType_ == SQL_C_WCHAR; }
    SQLLEN unit() const { return cType_ == SQL_C_WCHAR ? sizeof(SQLWCHAR) : 1; }
    bool isCut(SQLLEN length, size_t room) const;

    bool isBound() const { return !bound_.lengths.empty(); }
    bool isTextOfNumber() const {
        return isBound() && !statement_.driver().asTexts &&
               (type_.fetch == OdbcFetch::DECIMAL || type_.fetch == OdbcFetch::NUMBER);
    }

    void readText(size_t room);
    size_t roomBehind(size_t filled) const;
    size_t readPart(size_t& filled, size_t room);
    SQLRETURN getData(size_t filled, size_t room);
    size_t lengthToZero(const char* text, size_t room) const;
    Cell cell(SQLULEN place) const;
    Cell wholeText(const Cell& fetched, uint64_t record, SQLULEN place);
    void goTo(SQLULEN place) const;

    std::string_view utf8Of(const Cell& fetched);
    void readNumber(const Cell& fetched, SQLULEN place, FieldValue& value);
    double askForDouble(SQLULEN place) const;
    void numberIn(const Cell& fetched, FieldValue& value) const;

    const OdbcStatement& statement_;
    SQLUSMALLINT number_;
    OdbcColumnDescription description_;
    OdbcType type_{VT_BSTR, OdbcFetch::TEXT};
    SQLSMALLINT cType_ = SQL_C_CHAR;

    Bound bound_;
    size_t neededRoom_ = 0;       // what the texts so far would have needed
    bool hasOddNumbers_ = false;  // among those since it was bound
    Asked asked_;
    uint64_t askedRecord_ =
        0;  // whose text was asked for, because it was longer than what is bound
    std::vector<char> utf8_;
};

}  // namespace intake
