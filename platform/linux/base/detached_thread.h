#pragma once

#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <functional>
#include <memory>
#include <mutex>

namespace intake {

/// Tells other threads that something is done. Any thread.
class Completion {
public:
    void set();

    /// Waits until it is done. False when it still was not after `limit`.
    bool waitFor(std::chrono::milliseconds limit);

private:
    std::mutex mutex_;
    std::condition_variable condition_;
    bool done_ = false;
};

/// A thread that goes on by itself.
struct DetachedThread {
    uint64_t identifier;
    std::shared_ptr<Completion> end;  // what `body` owns is gone before anybody sees the end
};

/// Runs `body` on a new thread. Throws std::system_error when the system has none to give.
DetachedThread startDetached(std::function<void()> body);

}  // namespace intake
