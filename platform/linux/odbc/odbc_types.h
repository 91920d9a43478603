#pragma once

#include "platform/Database.h"
#include "platform/linux/odbc/OdbcHandle.h"

namespace intake {

/// How a value is fetched from the driver.
enum class OdbcFetch {
    NOTHING,  // its value is of no use to anybody
    BOOLEAN,
    SIGNED,
    UNSIGNED,
    DECIMAL,  // a number with a fraction, which drivers hold as its text
    NUMBER,
    TEXT,
};

struct OdbcType {
    VariantType variant;
    OdbcFetch fetch;
};

/// What values of an SQL type are to us. A type that we do not know is fetched as text.
OdbcType typeOfSql(SQLSMALLINT sqlType, bool isUnsigned);

}  // namespace intake
