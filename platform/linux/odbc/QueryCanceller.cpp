#include "platform/linux/odbc/QueryCanceller.h"

namespace intake {

QueryCanceller::QueryCanceller(SQLHSTMT statement, const EndMark& endMark,
                               std::chrono::milliseconds limit)
    : statement_(statement),
      endMark_(endMark),
      deadline_(std::chrono::steady_clock::now() + limit),
      watcher_([this] { watch(); }) {}

QueryCanceller::~QueryCanceller() {
    {
        const std::lock_guard lock(mutex_);
        done_ = true;
    }
    finished_.notify_one();
    watcher_.join();
}

/// Cancels under the lock: the owner must not go on with the statement meanwhile. Cancels again
/// when the call goes on: it may not have come to the query yet.
void QueryCanceller::watch() {
    constexpr std::chrono::milliseconds INTERVAL(50);
    constexpr std::chrono::milliseconds PATIENCE(1000);
    std::unique_lock lock(mutex_);
    std::chrono::milliseconds wait = INTERVAL;
    while (!finished_.wait_for(lock, wait, [this] { return done_; })) {
        late_ = late_ || std::chrono::steady_clock::now() >= deadline_;
        if (late_ || endMark_.isSet()) {
            SQLCancel(statement_);
            wait = PATIENCE;
        }
    }
}

}  // namespace intake
