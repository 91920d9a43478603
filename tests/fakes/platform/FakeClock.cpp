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
        const std::lock_guard lock(mutex_);
        ++sleepsUntilSignals_;
    }
    signal.wait();
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
