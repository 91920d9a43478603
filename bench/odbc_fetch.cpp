// odbc_fetch CONNECTION QUERY: fetches all records into bound columns, as texts, and throws them
// away. Time and peak memory go to standard error.

#include <sql.h>
#include <sqlext.h>

#include <array>
#include <cstdio>
#include <thread>
#include <vector>

#include "bench/process_usage.h"

namespace {

constexpr SQLLEN ROOM = 128;

struct Cell {
    std::array<char, ROOM> text;
    SQLLEN length;
};

SQLCHAR* odbcText(const char* text) {
    return reinterpret_cast<SQLCHAR*>(const_cast<char*>(text));
}

/// The number of records; negative when something fails.
long fetchAll(SQLHSTMT statement, const char* query) {
    SQLSMALLINT columns = 0;
    if (!SQL_SUCCEEDED(SQLExecDirect(statement, odbcText(query), SQL_NTS)) ||
        !SQL_SUCCEEDED(SQLNumResultCols(statement, &columns))) {
        return -1;
    }
    std::vector<Cell> cells(static_cast<size_t>(columns));
    for (SQLUSMALLINT column = 0; column < columns; ++column) {
        Cell& cell = cells[column];
        SQLBindCol(statement, static_cast<SQLUSMALLINT>(column + 1), SQL_C_CHAR, cell.text.data(),
                   ROOM, &cell.length);
    }
    long records = 0;
    while (SQL_SUCCEEDED(SQLFetch(statement))) {
        ++records;
    }
    return records;
}

long fetchFrom(const char* connectionString, const char* query) {
    SQLHANDLE environment = nullptr, connection = nullptr, statement = nullptr;
    SQLAllocHandle(SQL_HANDLE_ENV, nullptr, &environment);
    SQLSetEnvAttr(environment, SQL_ATTR_ODBC_VERSION, reinterpret_cast<void*>(SQL_OV_ODBC3), 0);
    SQLAllocHandle(SQL_HANDLE_DBC, environment, &connection);
    if (!SQL_SUCCEEDED(SQLDriverConnect(connection, nullptr, odbcText(connectionString), SQL_NTS,
                                        nullptr, 0, nullptr, SQL_DRIVER_NOPROMPT))) {
        return -1;
    }
    SQLAllocHandle(SQL_HANDLE_STMT, connection, &statement);
    const long records = fetchAll(statement, query);
    SQLFreeHandle(SQL_HANDLE_STMT, statement);
    SQLDisconnect(connection);
    SQLFreeHandle(SQL_HANDLE_DBC, connection);
    SQLFreeHandle(SQL_HANDLE_ENV, environment);
    return records;
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 3) {
        std::fprintf(stderr, "usage: odbc_fetch CONNECTION QUERY\n");
        return 2;
    }
    const double start = bench::wallSeconds();
    const double cpuStart = bench::cpuSeconds();
    long records = 0;
    // As a host's worker does: locks cost more once a process has threads.
    std::thread([&] { records = fetchFrom(argv[1], argv[2]); }).join();
    std::fprintf(stderr, "seconds %.4f cpu %.4f peak_mb %.1f records %ld\n",
                 bench::wallSeconds() - start, bench::cpuSeconds() - cpuStart,
                 bench::peakBytes() / 1e6, records);
    return records < 0 ? 1 : 0;
}
