#include "platform/linux/odbc/QueryCanceller.h"

namespace intake {

namespace {

constexpr Watcher::Time INTERVAL(50);
constexpr Watcher::Time PATIENCE(1000);

}  // namespace

QueryCanceller::QueryCanceller(SQLHSTMT statement, const EndMark& endMark,
                               std::chrono::milliseconds limit)
    : statement_(statement),
      endMark_(endMark),
      deadline_(std::chrono::steady_clock::now() + limit),
      watcher_(INTERVAL, [this] { return look(); }) {}

void QueryCanceller::setRunning(bool running) {
    const std::lock_guard lock(mutex_);
    isRunning_ = running;
}

/// Cancels again when the call goes on: it may not have come to the query yet.
Watcher::Time QueryCanceller::look() {
    const std::lock_guard lock(mutex_);
    late_ = late_ || (isTimed_ && std::chrono::steady_clock::now() >= deadline_);
    if (!isRunning_ || (!late_ && !endMark_.isSet())) {
        return INTERVAL;
    }
    SQLCancel(statement_);
    return PATIENCE;
}

}  // namespace intake
