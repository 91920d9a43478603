#pragma once

#include <chrono>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "workbench/probe/LookFailure.h"
#include "workbench/probe/Settings.h"

namespace probe {

using Deadline = std::chrono::steady_clock::time_point;

/// What stands in the way of a look at a database.
enum class DatabaseFault {
    ConnectionString,  // it cannot be read
    Provider,          // no such provider, driver or data source
    Missing,           // no such file
    Unreachable,       // the server does not answer
    Login,             // it refuses the user or the password
    NoDatabase,        // the server has no such database
    Busy,              // it is locked
    NotReadable,       // the file is none of this kind, or broken
    Query,             // the query is wrong
    Write,             // the query would write
    Late               // there was no answer in time
};

/// A database could not be looked at. what() is what the database, its driver or the system says,
/// for people; it shows no secret.
class DatabaseFailure : public LookFailure {
public:
    DatabaseFailure(DatabaseFault kind, const std::string& words, std::string advice = "",
                    Proposal mend = {})
        : LookFailure(words), fault(kind), next(std::move(advice)), proposal(std::move(mend)) {}

    const DatabaseFault fault;
    const std::string next;   // what to do about it, in a sentence
    const Proposal proposal;  // what may mend it; empty for nothing
};

struct TableEntry {
    std::string schema;  // empty where a query need not name it
    std::string name;
    bool isView = false;
};

struct ColumnEntry {
    std::string name;
    std::string type;  // in the database's own words; may be empty
};

/// What a query gives, row by row. One thread; does not outlive its database. Throws
/// DatabaseFailure.
class Rows {
public:
    virtual ~Rows() = default;
    virtual const std::vector<std::string>& columns() const = 0;

    /// Goes to the next row, at first to the first; false behind the last.
    virtual bool next() = 0;

    /// A value of the row, as a script has it: numbers in six digits. Nothing for NULL.
    virtual std::optional<std::string> value(std::size_t column) = 0;

    /// Whether the value of the row is a text.
    virtual bool isText(std::size_t column) const = 0;
};

/// A database that is looked at: nothing is ever written. One thread; whatever it is asked ends by
/// the deadline of its opening. Throws DatabaseFailure.
class Database {
public:
    virtual ~Database() = default;

    /// "SQLite 3.40", "PostgreSQL 15.0".
    virtual std::string words() const = 0;

    /// Tables and views, but for the system's own.
    virtual std::vector<TableEntry> tables() = 0;
    virtual std::vector<ColumnEntry> columns(const TableEntry& table) = 0;

    virtual std::unique_ptr<Rows> query(const std::string& query) = 0;

    /// The query for no more than so many rows of a table; for more of a database of an unknown
    /// make. Names are written as writtenName does.
    virtual std::string queryForFirst(std::size_t rows, const std::string& columns,
                                      const std::string& table) const = 0;

    /// Whether it takes queries apart as QueryText does, whatever is in them.
    virtual bool hasPlainSyntax() const = 0;

    /// Whether it refuses whatever would write. Of one that may not, nothing is read that nobody
    /// asked for: a view may call functions that write.
    virtual bool isHeldToReading() const = 0;

    /// The sign around a name that is no plain word.
    virtual char quote() const = 0;
};

}  // namespace probe
