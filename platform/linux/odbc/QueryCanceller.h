#pragma once

#include <atomic>
#include <chrono>

#include "formats/source/EndMark.h"
#include "platform/linux/base/Watcher.h"
#include "platform/linux/odbc/OdbcHandle.h"

namespace intake {

/// Cancels the calls that its owner makes on a statement meanwhile: once the end mark is set, or
/// the time is over. Lives on the worker thread around those calls.
class QueryCanceller {
public:
    QueryCanceller(SQLHSTMT statement, const EndMark& endMark, std::chrono::milliseconds limit);

    /// Whether it cancelled because the time was over.
    bool isLate() const { return late_; }

private:
    Watcher::Time look();

    SQLHSTMT statement_;
    const EndMark& endMark_;
    const std::chrono::steady_clock::time_point deadline_;
    std::atomic<bool> late_ = false;
    Watcher watcher_;  // goes first
};

}  // namespace intake
