// An ODBC driver whose answers are odd, as those of real drivers are that nobody has tried with us.
// A query `TYPE BEHAVIOUR VALUE` has one record with that one value; TYPE is a number of ODBC's.

#include <sql.h>
#include <sqlext.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <cstdlib>
#include <cstring>
#include <string>
#include <thread>

namespace {

struct Statement {
    SQLSMALLINT type = SQL_VARCHAR;
    std::string behaviour, value;
    bool fetched = false;
    size_t given = 0;  // of the value
    bool isGiven = false;
};

std::atomic<bool> isCancelled = false;

Statement& statementOf(SQLHSTMT handle) {
    return *static_cast<Statement*>(handle);
}

/// The length that the driver says of a value of so many bytes.
SQLLEN saidLength(const std::string& behaviour, size_t length, size_t unit) {
    if (behaviour == "too-long") {
        return static_cast<SQLLEN>(length + 1000);
    }
    if (behaviour == "huge") {
        return SQLLEN{1} << 60;
    }
    if (behaviour == "too-short") {
        return static_cast<SQLLEN>(unit);
    }
    if (behaviour == "in-characters") {
        return static_cast<SQLLEN>(length / unit);
    }
    return behaviour == "no-total" ? SQL_NO_TOTAL : static_cast<SQLLEN>(length);
}

/// Gives as much of the text as there is room for, with a zero behind it.
SQLRETURN giveText(Statement& statement, size_t unit, char* out, SQLLEN room, SQLLEN* said) {
    if (statement.isGiven) {
        return SQL_NO_DATA;
    }
    const size_t rest = statement.value.size() - statement.given;
    size_t count = std::min(rest, static_cast<size_t>(room) / unit - 1);
    if (count < rest && statement.behaviour.starts_with("whole-characters")) {
        count -= unit == 1 ? 3 : 1;  // as if the next one did not fit
    }
    for (size_t i = 0; i < count; ++i) {
        std::memset(out + i * unit, 0, unit);
        out[i * unit] = statement.value[statement.given + i];
    }
    std::memset(out + count * unit, 0, unit);
    *said = saidLength(statement.behaviour, rest * unit, unit);
    statement.given += count;
    statement.isGiven = count == rest;
    return statement.isGiven ? SQL_SUCCESS : SQL_SUCCESS_WITH_INFO;
}

bool isText(SQLSMALLINT cType) {
    return cType == SQL_C_CHAR || cType == SQL_C_WCHAR;
}

}  // namespace

extern "C" {

SQLRETURN SQLAllocHandle(SQLSMALLINT type, SQLHANDLE, SQLHANDLE* made) {
    *made = type == SQL_HANDLE_STMT ? static_cast<SQLHANDLE>(new Statement) : std::malloc(1);
    return SQL_SUCCESS;
}

SQLRETURN SQLFreeHandle(SQLSMALLINT type, SQLHANDLE handle) {
    if (type == SQL_HANDLE_STMT) {
        delete &statementOf(handle);
    } else {
        std::free(handle);
    }
    return SQL_SUCCESS;
}

SQLRETURN SQLSetEnvAttr(SQLHENV, SQLINTEGER, SQLPOINTER, SQLINTEGER) {
    return SQL_SUCCESS;
}

/// With `Sleep=500` it takes half a second.
SQLRETURN SQLDriverConnect(SQLHDBC, SQLHWND, SQLCHAR* text, SQLSMALLINT, SQLCHAR*, SQLSMALLINT,
                           SQLSMALLINT*, SQLUSMALLINT) {
    const std::string string = reinterpret_cast<const char*>(text);
    const size_t sleep = string.find("Sleep=");
    if (sleep != std::string::npos) {
        std::this_thread::sleep_for(
            std::chrono::milliseconds(std::stoi(string.substr(sleep + std::strlen("Sleep=")))));
    }
    return SQL_SUCCESS;
}

SQLRETURN SQLDisconnect(SQLHDBC) {
    return SQL_SUCCESS;
}

SQLRETURN SQLExecDirect(SQLHSTMT handle, SQLCHAR* query, SQLINTEGER) {
    const std::string text = reinterpret_cast<const char*>(query);
    const size_t first = text.find(' '), second = text.find(' ', first + 1);
    statementOf(handle) = {static_cast<SQLSMALLINT>(std::stoi(text)),
                           text.substr(first + 1, second - first - 1), text.substr(second + 1)};
    return SQL_SUCCESS;
}

SQLRETURN SQLCancel(SQLHSTMT) {
    isCancelled = true;
    return SQL_SUCCESS;
}

SQLRETURN SQLNumResultCols(SQLHSTMT, SQLSMALLINT* count) {
    *count = 1;
    return SQL_SUCCESS;
}

SQLRETURN SQLDescribeCol(SQLHSTMT handle, SQLUSMALLINT, SQLCHAR* name, SQLSMALLINT,
                         SQLSMALLINT* length, SQLSMALLINT* type, SQLULEN* size, SQLSMALLINT* digits,
                         SQLSMALLINT* nullable) {
    std::strcpy(reinterpret_cast<char*>(name), "v");
    *length = 1;
    *type = statementOf(handle).type;
    *size = 100;
    *digits = 0;
    *nullable = SQL_NULLABLE;
    return SQL_SUCCESS;
}

SQLRETURN SQLColAttribute(SQLHSTMT, SQLUSMALLINT, SQLUSMALLINT, SQLPOINTER, SQLSMALLINT,
                          SQLSMALLINT*, SQLLEN* number) {
    *number = SQL_FALSE;
    return SQL_SUCCESS;
}

SQLRETURN SQLFetch(SQLHSTMT handle) {
    Statement& statement = statementOf(handle);
    while (statement.behaviour == "waits" && statement.fetched) {
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
        if (isCancelled) {
            return SQL_ERROR;
        }
    }
    const bool isThere = !statement.fetched;
    statement.fetched = true;
    return isThere ? SQL_SUCCESS : SQL_NO_DATA;
}

SQLRETURN SQLGetData(SQLHSTMT handle, SQLUSMALLINT, SQLSMALLINT cType, SQLPOINTER out, SQLLEN room,
                     SQLLEN* said) {
    Statement& statement = statementOf(handle);
    if (statement.behaviour == "null") {
        *said = SQL_NULL_DATA;
        return SQL_SUCCESS;
    }
    if (!isText(cType)) {
        // As one driver does: a double is given as its text, all else is refused without a word.
        if (cType != SQL_C_DOUBLE) {
            return SQL_ERROR;
        }
        std::memcpy(out, statement.value.data(), std::min<size_t>(8, statement.value.size()));
        *said = static_cast<SQLLEN>(statement.value.size());
        return SQL_SUCCESS;
    }
    if (cType == SQL_C_WCHAR && statement.behaviour.ends_with("narrow")) {
        return SQL_ERROR;
    }
    return giveText(statement, cType == SQL_C_WCHAR ? 2 : 1, static_cast<char*>(out), room, said);
}

SQLRETURN SQLGetInfo(SQLHDBC, SQLUSMALLINT, SQLPOINTER out, SQLSMALLINT, SQLSMALLINT* length) {
    std::strcpy(static_cast<char*>(out), "odd");
    if (length != nullptr) {
        *length = 3;
    }
    return SQL_SUCCESS;
}

SQLRETURN SQLGetDiagRec(SQLSMALLINT, SQLHANDLE, SQLSMALLINT, SQLCHAR*, SQLINTEGER*, SQLCHAR*,
                        SQLSMALLINT, SQLSMALLINT*) {
    return SQL_NO_DATA;
}

}  // extern "C"
