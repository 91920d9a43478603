#pragma once

#include <string>

#include "platform/linux/odbc/OdbcHandle.h"

namespace intake {

// Calls of ODBC that take or give texts, here always in UTF-8. A `narrow` driver has no wide
// functions and gets UTF-8 as it is; to all others texts go in UTF-16, because what they make of
// narrow texts depends on the host's locale.

struct OdbcDiagnostic {
    std::string state;
    std::string message;
};

/// False when there is no such record. Records count from 1.
bool readDiagnostic(const OdbcHandle& handle, SQLSMALLINT record, bool narrow,
                    OdbcDiagnostic& diagnostic);

SQLRETURN connectWithString(SQLHDBC connection, const std::string& connectionString);

SQLRETURN executeQuery(SQLHSTMT statement, const std::string& query, bool narrow);

/// The same in two steps, where the query can be prepared.
SQLRETURN prepareAndExecute(SQLHSTMT statement, const std::string& query, bool narrow);

struct OdbcColumnDescription {
    std::string name;
    SQLSMALLINT type = 0;
    SQLULEN size = 0;
};

/// Columns count from 1.
SQLRETURN describeColumn(SQLHSTMT statement, SQLUSMALLINT number, bool narrow,
                         OdbcColumnDescription& description);

}  // namespace intake
