#pragma once

#include <atomic>
#include <memory>
#include <mutex>
#include <thread>
#include <vector>

#include "platform/Threads.h"

namespace intake {

/// Real threads and mutexes, whose failures can be arranged and whose use is counted. A thread
/// cannot be ended by force. The destructor waits for every thread that was started. Any thread.
class FakeThreads final : public Threads {
public:
    ~FakeThreads() override { join(); }

    std::unique_ptr<Mutex> createMutex() override;
    std::unique_ptr<ThreadHandle> start(std::function<void()> body) override;
    void enterWorker() override { ++entered_; }
    void leaveWorker() override {
        ++left_;
        if (onLeave) {
            onLeave();
        }
    }

    /// Called by a worker that leaves. Set before there is one.
    std::function<void()> onLeave;

    /// The next `times` calls of lock, or of tryLock, on the `index`th mutex that was made fail.
    void failLocks(size_t index, int times);
    void failTryLocks(size_t index, int times);

    /// From now on `start` throws.
    void refuseThreads() { refuses_ = true; }

    /// Waits for the end of every thread that was started so far.
    void join();

    int entered() const { return entered_; }
    int left() const { return left_; }
    int terminated() const { return *terminated_; }

    /// The limits of all waits for a thread's end, oldest first. Host's thread, as the waits are.
    const std::vector<std::chrono::milliseconds>& waits() const { return *waits_; }

    /// How often the next locks of one mutex are going to fail.
    struct Failures {
        std::atomic<int> locks = 0;
        std::atomic<int> tryLocks = 0;
    };

private:
    std::shared_ptr<Failures> failuresOf(size_t index);

    std::mutex mutex_;
    std::vector<std::thread> threads_;
    std::vector<std::shared_ptr<Failures>> failures_;
    std::atomic<int> entered_ = 0;
    std::atomic<int> left_ = 0;
    std::atomic<bool> refuses_ = false;
    // Shared with the handles, which may outlive this object.
    std::shared_ptr<std::atomic<int>> terminated_ = std::make_shared<std::atomic<int>>(0);
    std::shared_ptr<std::vector<std::chrono::milliseconds>> waits_ =
        std::make_shared<std::vector<std::chrono::milliseconds>>();
};

}  // namespace intake
