#pragma once

#include <sqlite3.h>

#include <memory>
#include <string>

#include "platform/linux/sqlite/SqliteSession.h"

namespace intake {

/// One statement of an SQLite database, finalized with its object. One worker thread.
class SqliteStatement {
public:
    /// The session outlives this object. Throws SqliteError; with SQLITE_EMPTY for a text without a
    /// statement, with SQLITE_MISUSE for one of several, and for parameters, which nobody fills.
    SqliteStatement(SqliteSession& session, const std::string& query);

    sqlite3_stmt* get() const { return statement_.get(); }

    /// 0 for a statement that has no result.
    int columnCount() const { return sqlite3_column_count(get()); }

    /// Goes to the next record; false behind the last. Throws SqliteError and GivenUp.
    bool step();

    /// Goes before the first record.
    void reset() { sqlite3_reset(get()); }

private:
    struct Finalize {
        void operator()(sqlite3_stmt* statement) const { sqlite3_finalize(statement); }
    };
    using Handle = std::unique_ptr<sqlite3_stmt, Finalize>;

    static Handle prepare(const SqliteSession& session, const char* text, const char*& rest);
    void refuseParameters() const;

    SqliteSession& session_;
    Handle statement_;
};

}  // namespace intake
