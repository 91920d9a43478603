#include "workbench/probe/database/SqliteDatabase.h"

#include <algorithm>

#include "formats/text/six_digits.h"
#include "workbench/probe/database/database_file.h"

namespace probe {

namespace {

using Clock = std::chrono::steady_clock;

constexpr const char* lateText = "It gave no answer in time.";

struct Finalize {
    void operator()(sqlite3_stmt* statement) const { sqlite3_finalize(statement); }
};
using Statement = std::unique_ptr<sqlite3_stmt, Finalize>;

int isOver(void* deadline) {
    return Clock::now() > *static_cast<const Deadline*>(deadline) ? 1 : 0;
}

[[noreturn]] void fail(sqlite3* database, int code) {
    const std::string message = sqlite3_errmsg(database);
    switch (code & 0xFF) {
        case SQLITE_BUSY:
        case SQLITE_LOCKED:
            throw DatabaseFailure(DatabaseFault::Busy, "It is locked: " + message + ".",
                                  "Let the program that writes it end its transaction; a "
                                  "database in the mode WAL can be read meanwhile.");
        case SQLITE_NOTADB:
        case SQLITE_CORRUPT:
            throw DatabaseFailure(DatabaseFault::NotReadable,
                                  "The file is no whole database of SQLite: " + message + ".",
                                  "Copy or make it again, or set the connection string to "
                                  "another file.");
        case SQLITE_INTERRUPT:
            throw DatabaseFailure(DatabaseFault::Late, lateText,
                                  "Make the query quicker, or let it give fewer rows.");
        case SQLITE_READONLY:
            throw DatabaseFailure(DatabaseFault::Write, message);
        case SQLITE_CANTOPEN:
            throw DatabaseFailure(DatabaseFault::NotReadable,
                                  "The file cannot be opened: " + message + ".",
                                  "Let the user who runs the host read the file and open the "
                                  "folders above it.");
        default:
            throw DatabaseFailure(DatabaseFault::Query, message);
    }
}

/// Nobody gives them a value.
void refuseParameters(sqlite3_stmt* statement) {
    if (sqlite3_bind_parameter_count(statement) == 0) return;
    const char* const name = sqlite3_bind_parameter_name(statement, 1);
    throw DatabaseFailure(DatabaseFault::Query,
                          std::string("the query has a parameter without a value: ") +
                              (name == nullptr ? "?" : name));
}

Statement prepared(sqlite3* database, const std::string& query) {
    sqlite3_stmt* statement = nullptr;
    const int result = sqlite3_prepare_v2(database, query.c_str(), -1, &statement, nullptr);
    if (result != SQLITE_OK) fail(database, result);
    Statement whole(statement);
    refuseParameters(statement);
    return whole;
}

class SqliteRows final : public Rows {
public:
    SqliteRows(sqlite3* database, Statement statement)
        : database_(database), statement_(std::move(statement)) {
        for (int i = 0; i < sqlite3_column_count(statement_.get()); ++i)
            columns_.emplace_back(sqlite3_column_name(statement_.get(), i));
    }

    const std::vector<std::string>& columns() const override { return columns_; }

    bool next() override {
        const int result = sqlite3_step(statement_.get());
        if (result != SQLITE_ROW && result != SQLITE_DONE) fail(database_, result);
        return result == SQLITE_ROW;
    }

    std::optional<std::string> value(std::size_t column) override {
        const int at = static_cast<int>(column);
        if (typeOf(column) == SQLITE_NULL) return std::nullopt;
        std::string text;
        if (typeOf(column) == SQLITE_FLOAT) {
            intake::appendSixDigits(text, sqlite3_column_double(statement_.get(), at));
            return text;
        }
        const auto* const bytes = sqlite3_column_text(statement_.get(), at);
        const int size = sqlite3_column_bytes(statement_.get(), at);
        return std::string(reinterpret_cast<const char*>(bytes), static_cast<std::size_t>(size));
    }

    bool isText(std::size_t column) const override { return typeOf(column) == SQLITE_TEXT; }

private:
    int typeOf(std::size_t column) const {
        return sqlite3_column_type(statement_.get(), static_cast<int>(column));
    }

    sqlite3* database_;
    Statement statement_;
    std::vector<std::string> columns_;
};

/// SQLite's names for what is no file, or may be one.
bool isSpecialName(const std::string& path) {
    return path == ":memory:" || path.starts_with("file:");
}

}  // namespace

SqliteDatabase::SqliteDatabase(const intake::SqliteSettings& settings, Deadline end) : end_(end) {
    if (!isSpecialName(settings.path)) checkDatabaseFile(settings.path);
    // Opened for reading only, it could not roll back what a writer left unfinished, and would
    // leave files behind; the plugin opens it so, too.
    open(settings.path.c_str(), SQLITE_OPEN_READWRITE);
    const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(end - Clock::now());
    sqlite3_busy_timeout(handle(), static_cast<int>(std::min(left, settings.lockTime).count()));
    query("PRAGMA query_only = 1")->next();
    query("PRAGMA schema_version")->next();  // says whether it is a database, and locked
}

SqliteDatabase::SqliteDatabase(Deadline end) : end_(end) {
    open(":memory:", SQLITE_OPEN_READWRITE | SQLITE_OPEN_MEMORY);
}

void SqliteDatabase::open(const char* name, int flags) {
    sqlite3* database = nullptr;
    const int result = sqlite3_open_v2(name, &database, flags | SQLITE_OPEN_NOMUTEX, nullptr);
    database_.reset(database);
    if (database == nullptr) throw std::bad_alloc();
    if (result != SQLITE_OK) fail(database, result);
    constexpr int stepsBetweenLooks = 10'000;
    sqlite3_progress_handler(database, stepsBetweenLooks, isOver, const_cast<Deadline*>(&end_));
}

std::string SqliteDatabase::words() const {
    return "a database of SQLite";
}

std::vector<TableEntry> SqliteDatabase::tables() {
    std::vector<TableEntry> tables;
    const auto rows = query(
        "SELECT name, type FROM sqlite_schema WHERE type IN ('table', 'view') "
        "AND name NOT LIKE 'sqlite\\_%' ESCAPE '\\' ORDER BY rowid");
    while (rows->next())
        tables.push_back({"", *rows->value(0), rows->value(1) == "view"});
    return tables;
}

std::vector<ColumnEntry> SqliteDatabase::columns(const TableEntry& table) {
    std::vector<ColumnEntry> columns;
    std::string name;
    for (const char c : table.name)
        name.append(c == '\'' ? 2 : 1, c);
    const auto rows = query("SELECT name, type FROM pragma_table_info('" + name + "')");
    while (rows->next())
        columns.push_back({rows->value(0).value_or(""), rows->value(1).value_or("")});
    return columns;
}

std::string SqliteDatabase::queryForFirst(std::size_t rows, const std::string& columns,
                                          const std::string& table) const {
    return "SELECT " + columns + " FROM " + table + " LIMIT " + std::to_string(rows);
}

std::unique_ptr<Rows> SqliteDatabase::query(const std::string& query) {
    return std::make_unique<SqliteRows>(handle(), prepared(handle(), query));
}

}  // namespace probe
