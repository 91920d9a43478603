#pragma once

#include <sqlite3.h>

#include <atomic>
#include <chrono>
#include <memory>
#include <optional>
#include <string>

#include "formats/source/EndMark.h"
#include "platform/linux/base/Watcher.h"

namespace intake {

/// How long things may take in an SQLite database.
struct SqliteTimes {
    std::chrono::milliseconds lock;                               // until a locked database is free
    std::chrono::milliseconds record = std::chrono::seconds(30);  // until a query's next record
};

/// An open SQLite database. The end mark ends what runs within a fraction of a second, and so do
/// the times. One worker thread.
class SqliteSession {
public:
    /// `flags` are those of sqlite3_open_v2. `endMark` outlives this object. Throws SqliteError.
    SqliteSession(const std::string& name, int flags, SqliteTimes times, const EndMark& endMark);
    SqliteSession(const SqliteSession&) = delete;  // SQLite knows its address
    SqliteSession& operator=(const SqliteSession&) = delete;

    sqlite3* get() const { return database_.get(); }

    /// Runs a statement to its next record; what SQLite says.
    int step(sqlite3_stmt* statement);

    /// What SQLite says about its last failure; GivenUp when it was the end mark.
    [[noreturn]] void throwFailure(int code) const;

private:
    using Clock = std::chrono::steady_clock;

    struct Close {
        void operator()(sqlite3* database) const { sqlite3_close_v2(database); }
    };

    static int onLocked(void* session, int before);
    bool waitForLock(int before);
    std::optional<Watcher::Time> look();

    const SqliteTimes times_;
    const EndMark& endMark_;
    Clock::time_point lockEnd_;
    std::unique_ptr<sqlite3, Close> database_;  // goes behind the watcher only

    std::atomic<uint64_t> count_ = 0;  // of beginnings and ends of steps: odd within one
    std::atomic<bool> late_ = false;
    uint64_t seen_ = 0;  // of the count, by the watcher
    Clock::time_point stepEnd_;
    std::optional<Watcher> watcher_;
};

}  // namespace intake
