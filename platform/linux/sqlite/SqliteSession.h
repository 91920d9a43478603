#pragma once

#include <sqlite3.h>

#include <chrono>
#include <memory>
#include <string>

#include "formats/source/EndMark.h"

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

    /// To be said before each step of a query: the time for a record begins.
    void startStep() { stepStarts_ = true; }

    /// What SQLite says about its last failure; GivenUp when it was the end mark.
    [[noreturn]] void throwFailure(int code) const;

private:
    using Clock = std::chrono::steady_clock;

    struct Close {
        void operator()(sqlite3* database) const { sqlite3_close_v2(database); }
    };

    static int onProgress(void* session);
    static int onLocked(void* session, int before);
    bool isOver();
    bool waitForLock(int before);

    const SqliteTimes times_;
    const EndMark& endMark_;
    bool stepStarts_ = true;
    bool late_ = false;
    Clock::time_point stepEnd_;
    Clock::time_point lockEnd_;
    std::unique_ptr<sqlite3, Close> database_;  // goes first
};

}  // namespace intake
