#include "platform/linux/sqlite/SqliteSession.h"

#include <algorithm>
#include <new>
#include <thread>

#include "platform/linux/sqlite/SqliteError.h"

namespace intake {

namespace {

constexpr std::chrono::milliseconds LOCK_POLL(10);
constexpr Watcher::Time LOOK_INTERVAL(20);

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
    sqlite3_busy_handler(database, onLocked, this);
    watcher_.emplace(LOOK_INTERVAL, [this] { return look(); });
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

int SqliteSession::step(sqlite3_stmt* statement) {
    ++count_;
    const int result = sqlite3_step(statement);
    ++count_;
    return result;
}

int SqliteSession::onLocked(void* session, int before) {
    return static_cast<SqliteSession*>(session)->waitForLock(before) ? 1 : 0;
}

/// On the watcher's thread. An interruption ends the statements that run; it is made again and
/// again, as one that comes between two of them is forgotten.
std::optional<Watcher::Time> SqliteSession::look() {
    const auto now = Clock::now();
    const uint64_t count = count_;
    if (count != seen_) {
        seen_ = count;
        stepEnd_ = now + times_.record;
    }
    const bool isInStep = count % 2 == 1;
    if (isInStep && now >= stepEnd_) {
        late_ = true;
    }
    if (late_ || endMark_.isSet()) {
        sqlite3_interrupt(database_.get());
    }
    return LOOK_INTERVAL;
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
    count_ += 2;  // the time for a record begins anew
    return true;
}

}  // namespace intake
