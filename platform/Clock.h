#pragma once

#include <chrono>

#include "platform/Signal.h"

namespace intake {

/// The wall clock of the user's time zone.
struct LocalTime {
    int year, month, day, hour, minute;
};

/// The system's clocks. Process-wide; any thread; does not fail.
class Clock {
public:
    virtual ~Clock() = default;

    /// A clock that never goes back, in milliseconds since some moment in the past, with the
    /// resolution of the system's performance counter.
    virtual double milliseconds() = 0;

    virtual LocalTime localTime() = 0;

    virtual void sleep(std::chrono::milliseconds duration) = 0;

    /// Sleeps until the signal is raised.
    virtual void sleepUntil(Signal& signal) { signal.wait(); }

    /// The same, but no longer than `limit`; false when the signal was not raised by then.
    virtual bool sleepUntil(Signal& signal, std::chrono::milliseconds limit) {
        return signal.waitFor(limit);
    }
};

}  // namespace intake
