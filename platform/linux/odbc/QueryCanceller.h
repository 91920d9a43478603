#pragma once

#include <condition_variable>
#include <mutex>
#include <thread>

#include "formats/source/EndMark.h"
#include "platform/linux/odbc/OdbcHandle.h"

namespace intake {

/// Cancels the call that its owner makes on a statement meanwhile, once the end mark is set. Lives
/// on the worker thread around that one call; its own thread ends with it.
class QueryCanceller {
public:
    QueryCanceller(SQLHSTMT statement, const EndMark& endMark);
    ~QueryCanceller();
    QueryCanceller(const QueryCanceller&) = delete;
    QueryCanceller& operator=(const QueryCanceller&) = delete;

private:
    void watch();

    SQLHSTMT statement_;
    const EndMark& endMark_;
    std::mutex mutex_;
    std::condition_variable finished_;
    bool done_ = false;
    std::thread watcher_;
};

}  // namespace intake
