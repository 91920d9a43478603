#include "platform/linux/odbc/abandonable_call.h"

#include <condition_variable>
#include <memory>
#include <mutex>
#include <thread>

namespace intake {

namespace {

constexpr std::chrono::milliseconds INTERVAL(50);

/// What the caller and the thread of the call share.
class Completion {
public:
    void set() {
        const std::lock_guard lock(mutex_);
        done_ = true;
        condition_.notify_one();
    }
    bool waitFor(std::chrono::milliseconds time) {
        std::unique_lock lock(mutex_);
        return condition_.wait_for(lock, time, [this] { return done_; });
    }

private:
    std::mutex mutex_;
    std::condition_variable condition_;
    bool done_ = false;
};

}  // namespace

CallOutcome makeAbandonableCall(std::function<void()> call, const EndMark& endMark,
                                std::chrono::milliseconds limit) {
    const auto completion = std::make_shared<Completion>();
    std::thread([call = std::move(call), completion]() mutable {
        call();
        call = nullptr;  // what it owns is gone before anybody sees the end
        completion->set();
    }).detach();

    const auto deadline = std::chrono::steady_clock::now() + limit;
    while (!completion->waitFor(INTERVAL)) {
        if (endMark.isSet()) {
            return CallOutcome::ENDED;
        }
        if (std::chrono::steady_clock::now() >= deadline) {
            return CallOutcome::LATE;
        }
    }
    return CallOutcome::DONE;
}

}  // namespace intake
