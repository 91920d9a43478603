#pragma once

#include <condition_variable>
#include <mutex>

namespace intake {

/// Wakes a thread that waits for something to do. Raised twice before anybody waits, it is raised
/// once.
class Signal {
public:
    /// Any thread.
    void raise() {
        const std::lock_guard lock(mutex_);
        isRaised_ = true;
        condition_.notify_one();
    }

    /// Waits until it is raised, and takes it down. One thread only.
    void wait() {
        std::unique_lock lock(mutex_);
        condition_.wait(lock, [this] { return isRaised_; });
        isRaised_ = false;
    }

private:
    std::mutex mutex_;
    std::condition_variable condition_;
    bool isRaised_ = false;
};

}  // namespace intake
