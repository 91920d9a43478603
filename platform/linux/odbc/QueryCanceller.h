#pragma once

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <mutex>
#include <thread>

#include "formats/source/EndMark.h"
#include "platform/linux/odbc/OdbcHandle.h"

namespace intake {

/// Cancels the calls that its owner makes on a statement meanwhile: once the end mark is set, or
/// the time is over. Lives on the worker thread around those calls; its own thread ends with it.
class QueryCanceller {
public:
    QueryCanceller(SQLHSTMT statement, const EndMark& endMark, std::chrono::milliseconds limit);
    ~QueryCanceller();
    QueryCanceller(const QueryCanceller&) = delete;
    QueryCanceller& operator=(const QueryCanceller&) = delete;

    /// Whether it cancelled because the time was over.
    bool isLate() const { return late_; }

private:
    void watch();

    SQLHSTMT statement_;
    const EndMark& endMark_;
    const std::chrono::steady_clock::time_point deadline_;
    std::atomic<bool> late_ = false;
    std::mutex mutex_;
    std::condition_variable finished_;
    bool done_ = false;
    std::thread watcher_;
};

}  // namespace intake
