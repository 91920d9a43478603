// sqlite_fetch FILE QUERY: steps through all records by SQLite's own interface, takes every value
// as text and throws it away. Time and peak memory go to standard error.

#include <sqlite3.h>

#include <cstdio>

#include "bench/process_usage.h"

int main(int argc, char** argv) {
    if (argc != 3) {
        std::fprintf(stderr, "usage: sqlite_fetch FILE QUERY\n");
        return 2;
    }
    const double start = bench::wallSeconds();
    const double cpuStart = bench::cpuSeconds();
    sqlite3* database = nullptr;
    sqlite3_stmt* statement = nullptr;
    if (sqlite3_open_v2(argv[1], &database, SQLITE_OPEN_READONLY, nullptr) != SQLITE_OK ||
        sqlite3_prepare_v2(database, argv[2], -1, &statement, nullptr) != SQLITE_OK) {
        std::fprintf(stderr, "sqlite_fetch: %s\n", sqlite3_errmsg(database));
        return 1;
    }
    const int columns = sqlite3_column_count(statement);
    long records = 0;
    for (; sqlite3_step(statement) == SQLITE_ROW; ++records) {
        for (int column = 0; column < columns; ++column) {
            sqlite3_column_text(statement, column);
        }
    }
    sqlite3_finalize(statement);
    sqlite3_close(database);
    std::fprintf(stderr, "seconds %.4f cpu %.4f peak_mb %.1f records %ld\n",
                 bench::wallSeconds() - start, bench::cpuSeconds() - cpuStart,
                 bench::peakBytes() / 1e6, records);
    return 0;
}
