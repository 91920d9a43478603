#pragma once

#include <chrono>
#include <condition_variable>
#include <mutex>

namespace intake {

/// Wakes a thread that waits for something to do. Raised twice before anybody waits, it is raised
/// once.
class Signal {
public:
    /// Any thread that keeps this object alive meanwhile.
    void raise() {
        {
            const std::lock_guard lock(mutex_);
            isRaised_ = true;
        }
        condition_.notify_one();  // who is woken would wait for the mutex else, and be woken twice
    }

    /// Waits until it is raised, and takes it down. One thread only.
    void wait() {
        std::unique_lock lock(mutex_);
        condition_.wait(lock, [this] { return isRaised_; });
        isRaised_ = false;
    }

    /// The same, but no longer than `limit`; false when it was not raised by then.
    bool waitFor(std::chrono::milliseconds limit) {
        std::unique_lock lock(mutex_);
        const bool wasRaised = condition_.wait_for(lock, limit, [this] { return isRaised_; });
        isRaised_ = false;
        return wasRaised;
    }

private:
    std::mutex mutex_;
    std::condition_variable condition_;
    bool isRaised_ = false;
};

}  // namespace intake
