#pragma once

#include <sqlite3.h>

#include <memory>

#include "formats/connection/sqlite_connection_string.h"
#include "workbench/probe/database/Database.h"

namespace probe {

/// A database of SQLite: a file, or what is made in memory.
class SqliteDatabase : public Database {
public:
    /// Opens a file. Nothing that is asked can write.
    SqliteDatabase(const intake::SqliteSettings& settings, Deadline end);

    std::string words() const override;
    std::vector<TableEntry> tables() override;
    std::vector<ColumnEntry> columns(const TableEntry& table) override;
    std::unique_ptr<Rows> query(const std::string& query) override;
    std::string queryForFirst(std::size_t rows, const std::string& columns,
                              const std::string& table) const override;
    bool hasPlainSyntax() const override { return true; }
    bool isHeldToReading() const override { return true; }
    char quote() const override { return '"'; }

protected:
    /// An empty one in memory, to be filled.
    explicit SqliteDatabase(Deadline end);

    sqlite3* handle() const { return database_.get(); }

private:
    struct Close {
        void operator()(sqlite3* database) const { sqlite3_close_v2(database); }
    };

    void open(const char* name, int flags);

    std::unique_ptr<sqlite3, Close> database_;
    const Deadline end_;
};

}  // namespace probe
