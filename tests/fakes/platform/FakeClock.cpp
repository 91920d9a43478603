#include "tests/fakes/platform/FakeClock.h"

#include <algorithm>
#include <thread>

namespace intake {

double FakeClock::milliseconds() {
    const std::lock_guard lock(mutex_);
    return milliseconds_;
}

LocalTime FakeClock::localTime() {
    const std::lock_guard lock(mutex_);
    return localTime_;
}

void FakeClock::sleep(std::chrono::milliseconds duration) {
    {
        const std::lock_guard lock(mutex_);
        ++sleeps_[duration];
    }
    if (onSleep) {
        onSleep();
    }
    std::this_thread::sleep_for(std::min(duration, std::chrono::milliseconds(1)));
}

void FakeClock::sleepUntil(Signal& signal) {
    {
        std::unique_lock lock(mutex_);
        ++sleepsUntilSignals_;
        heldBackFrom_ = isHolding_ ? &signal : nullptr;
        hasLetGo_.wait(lock, [this] { return !isHolding_; });
    }
    signal.wait();
}

void FakeClock::hold() {
    const std::lock_guard lock(mutex_);
    isHolding_ = true;
}

bool FakeClock::letGo() {
    const std::lock_guard lock(mutex_);
    const bool wasRaised =
        heldBackFrom_ != nullptr && heldBackFrom_->waitFor(std::chrono::milliseconds(0));
    if (wasRaised) {
        heldBackFrom_->raise();
    }
    isHolding_ = false;
    hasLetGo_.notify_all();
    return wasRaised;
}

bool FakeClock::sleepUntil(Signal& signal, std::chrono::milliseconds limit) {
    {
        const std::lock_guard lock(mutex_);
        ++sleeps_[limit];
    }
    if (onSleep) {
        onSleep();
    }
    const bool wasRaised = signal.waitFor(std::min(limit, std::chrono::milliseconds(1)));
    const std::lock_guard lock(mutex_);
    sleepsUntilSignals_ += wasRaised ? 1 : 0;
    return wasRaised;
}

int FakeClock::sleepsUntilSignals() const {
    const std::lock_guard lock(mutex_);
    return sleepsUntilSignals_;
}

void FakeClock::setLocalTime(const LocalTime& now) {
    const std::lock_guard lock(mutex_);
    localTime_ = now;
}

int FakeClock::sleepsOf(std::chrono::milliseconds duration) const {
    const std::lock_guard lock(mutex_);
    const auto found = sleeps_.find(duration);
    return found == sleeps_.end() ? 0 : found->second;
}

}  // namespace intake
