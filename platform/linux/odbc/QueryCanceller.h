#pragma once

#include <atomic>
#include <chrono>
#include <mutex>

#include "formats/source/EndMark.h"
#include "platform/linux/base/Watcher.h"
#include "platform/linux/odbc/OdbcHandle.h"

namespace intake {

/// Cancels whichever call on a statement is under way once the end mark is set, or once a time is
/// over. Lives as long as the statement's owner, on the worker thread.
class QueryCanceller {
public:
    QueryCanceller(SQLHSTMT statement, const EndMark& endMark, std::chrono::milliseconds limit);

    /// Runs a call that may block.
    template <class Call>
    SQLRETURN run(Call call) {
        setRunning(true);
        const SQLRETURN result = call();
        setRunning(false);
        return result;
    }

    /// From now on only the end mark counts.
    void forgetTime() { isTimed_ = false; }

    /// Whether it cancelled because the time was over.
    bool isLate() const { return late_; }

private:
    void setRunning(bool running);
    Watcher::Time look();

    SQLHSTMT statement_;
    const EndMark& endMark_;
    const std::chrono::steady_clock::time_point deadline_;
    std::atomic<bool> isTimed_ = true;
    std::atomic<bool> late_ = false;
    std::mutex mutex_;  // the owner must not go on with the statement while it is being cancelled
    bool isRunning_ = false;
    Watcher watcher_;  // goes first
};

}  // namespace intake
