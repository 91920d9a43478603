#pragma once

#include <sql.h>
#include <sqlext.h>

#include <string>
#include <vector>

namespace probe {

/// What a call of ODBC said when it failed.
struct OdbcMessage {
    std::string state;  // SQLSTATE
    long code = 0;      // the database's own
    std::string text;   // in UTF-8, in one line, without the names of driver and driver manager
};

std::vector<OdbcMessage> messagesOf(SQLSMALLINT type, SQLHANDLE handle);

/// The first one; a general one where nothing was said.
OdbcMessage messageOf(SQLSMALLINT type, SQLHANDLE handle);

/// "PostgreSQL", for SQL_DBMS_NAME; empty where the driver does not say.
std::string infoOf(SQLHDBC connection, SQLUSMALLINT what);

/// A value of the current row as a text in UTF-8; false for NULL. Throws DatabaseFailure.
bool readText(SQLHSTMT statement, SQLUSMALLINT column, std::string& text);

}  // namespace probe
