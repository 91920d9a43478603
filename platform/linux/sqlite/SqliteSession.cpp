#include "platform/linux/sqlite/SqliteSession.h"

#include <algorithm>
#include <new>
#include <thread>

#include "platform/linux/sqlite/SqliteError.h"

namespace intake {

namespace {

constexpr int OPERATIONS_BETWEEN_CHECKS = 10000;
constexpr std::chrono::milliseconds LOCK_POLL(10);

}  // namespace

SqliteSession::SqliteSession(const std::string& name, int flags, SqliteTimes times,
                             const EndMark& endMark)
    : times_(times), endMark_(endMark) {
    sqlite3* database = nullptr;
    const int result =
        sqlite3_open_v2(name.c_str(), &database, flags | SQLITE_OPEN_NOMUTEX, nullptr);
    database_.reset(database);
    if (database == nullptr) {
        throw std::bad_alloc();
    }
    if (result != SQLITE_OK) {
        throwFailure(result);
    }
    sqlite3_progress_handler(database, OPERATIONS_BETWEEN_CHECKS, onProgress, this);
    sqlite3_busy_handler(database, onLocked, this);
}

void SqliteSession::throwFailure(int code) const {
    endMark_.throwIfSet();
    if (code == SQLITE_NOMEM) {
        throw std::bad_alloc();
    }
    if (code == SQLITE_INTERRUPT && late_) {
        const auto seconds = std::chrono::duration_cast<std::chrono::seconds>(times_.record);
        throw SqliteError(code,
                          "no record came within " + std::to_string(seconds.count()) + " seconds");
    }
    throw SqliteError(code, sqlite3_errmsg(database_.get()));
}

int SqliteSession::onProgress(void* session) {
    return static_cast<SqliteSession*>(session)->isOver() ? 1 : 0;
}

int SqliteSession::onLocked(void* session, int before) {
    return static_cast<SqliteSession*>(session)->waitForLock(before) ? 1 : 0;
}

/// The clock is read here and not with each record, of which there may be millions a second.
bool SqliteSession::isOver() {
    const auto now = Clock::now();
    if (stepStarts_) {
        stepStarts_ = false;
        stepEnd_ = now + times_.record;
    }
    late_ = now >= stepEnd_;
    return late_ || endMark_.isSet();
}

/// Waits a little; false when it was enough. SQLite has asked `before` times for the same lock.
bool SqliteSession::waitForLock(int before) {
    const auto now = Clock::now();
    if (before == 0) {
        lockEnd_ = now + times_.lock;
    }
    if (now >= lockEnd_ || endMark_.isSet()) {
        return false;
    }
    std::this_thread::sleep_for(std::min<Clock::duration>(LOCK_POLL, lockEnd_ - now));
    stepStarts_ = true;
    return true;
}

}  // namespace intake
