#pragma once

#include <condition_variable>
#include <functional>
#include <map>
#include <mutex>

#include "platform/Clock.h"

namespace intake {

/// A clock that stands still until a test sets it. Sleeping takes a moment of real time, so that
/// polling threads leave the processor to others, and is counted by its length. Any thread.
class FakeClock final : public Clock {
public:
    double milliseconds() override;
    LocalTime localTime() override;
    void sleep(std::chrono::milliseconds duration) override;
    void sleepUntil(Signal& signal) override;
    bool sleepUntil(Signal& signal, std::chrono::milliseconds limit) override;

    void setLocalTime(const LocalTime& now);

    /// How often somebody has slept for exactly this long.
    int sleepsOf(std::chrono::milliseconds duration) const;

    /// How often somebody has begun to sleep until a signal, or has slept no longer than that.
    int sleepsUntilSignals() const;

    /// From its next sleep on, who sleeps until a signal is woken by none before letGo().
    void hold();

    /// Lets who is held be woken again; whether its signal was raised meanwhile.
    bool letGo();

    /// Called at the beginning of every sleep. Set before anybody sleeps.
    std::function<void()> onSleep;

private:
    mutable std::mutex mutex_;
    double milliseconds_ = 0;
    LocalTime localTime_{2026, 3, 5, 9, 7};
    std::map<std::chrono::milliseconds, int> sleeps_;
    int sleepsUntilSignals_ = 0;
    Signal* heldBackFrom_ = nullptr;
    bool isHolding_ = false;
    std::condition_variable hasLetGo_;
};

}  // namespace intake
