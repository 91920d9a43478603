#include "tests/fakes/platform/FakeThreads.h"

#include <future>
#include <system_error>

namespace intake {

namespace {

using Waits = std::vector<std::chrono::milliseconds>;

/// Counts one arranged failure down; false when none is left.
bool consume(std::atomic<int>& failures) {
    int left = failures;
    while (left > 0 && !failures.compare_exchange_weak(left, left - 1)) {
    }
    return left > 0;
}

class FailingMutex final : public Mutex {
public:
    explicit FailingMutex(std::shared_ptr<FakeThreads::Failures> failures)
        : failures_(std::move(failures)) {}

    bool lock() override {
        if (consume(failures_->locks)) {
            return false;
        }
        mutex_.lock();
        return true;
    }
    bool tryLock() override { return !consume(failures_->tryLocks) && mutex_.try_lock(); }
    void unlock() override { mutex_.unlock(); }

private:
    std::recursive_mutex mutex_;
    std::shared_ptr<FakeThreads::Failures> failures_;
};

class CountingHandle final : public ThreadHandle {
public:
    CountingHandle(std::thread::id identifier, std::future<void> end,
                   std::shared_ptr<std::atomic<int>> terminated, std::shared_ptr<Waits> waits)
        : identifier_(std::hash<std::thread::id>{}(identifier)),
          end_(std::move(end)),
          terminated_(std::move(terminated)),
          waits_(std::move(waits)) {}

    uint64_t identifier() const override { return identifier_; }
    bool waitFor(std::chrono::milliseconds limit) override {
        waits_->push_back(limit);
        return end_.wait_for(limit) == std::future_status::ready;
    }
    void terminate() override { ++*terminated_; }

private:
    uint64_t identifier_;
    std::future<void> end_;
    std::shared_ptr<std::atomic<int>> terminated_;
    std::shared_ptr<Waits> waits_;
};

}  // namespace

std::unique_ptr<Mutex> FakeThreads::createMutex() {
    const std::lock_guard lock(mutex_);
    failures_.push_back(std::make_shared<Failures>());
    return std::make_unique<FailingMutex>(failures_.back());
}

std::unique_ptr<ThreadHandle> FakeThreads::start(std::function<void()> body) {
    if (refuses_) {
        throw std::system_error(std::make_error_code(std::errc::resource_unavailable_try_again));
    }
    std::promise<void> end;
    std::future<void> ended = end.get_future();
    std::thread thread([body = std::move(body), end = std::move(end)]() mutable {
        body();
        body = nullptr;  // what it holds is gone before anybody sees the end
        end.set_value();
    });
    const std::thread::id identifier = thread.get_id();
    const std::lock_guard lock(mutex_);
    threads_.push_back(std::move(thread));
    return std::make_unique<CountingHandle>(identifier, std::move(ended), terminated_, waits_);
}

void FakeThreads::failLocks(size_t index, int times) {
    failuresOf(index)->locks = times;
}

void FakeThreads::failTryLocks(size_t index, int times) {
    failuresOf(index)->tryLocks = times;
}

void FakeThreads::join() {
    std::vector<std::thread> started;
    {
        const std::lock_guard lock(mutex_);
        started.swap(threads_);
    }
    for (std::thread& thread : started) {
        thread.join();
    }
}

std::shared_ptr<FakeThreads::Failures> FakeThreads::failuresOf(size_t index) {
    const std::lock_guard lock(mutex_);
    return failures_.at(index);
}

}  // namespace intake
