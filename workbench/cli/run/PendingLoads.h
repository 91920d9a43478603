#pragma once

#include <cstddef>
#include <deque>
#include <optional>

namespace workbench {

/// The loads of an instance that were begun and not answered yet. Times are in seconds.
class PendingLoads {
public:
    void began(double now) { begun_.push_back(now); }

    /// How long the oldest one took, which is answered now; 0 when none is known of.
    double answered(double now);

    /// How many have become late since this was last asked: each is counted once.
    std::size_t becameLate(double now, double limit);

    bool isAnyLate() const { return late_ > 0; }

    /// How long the oldest one is waited for; nothing when there is none.
    std::optional<double> age(double now) const;

    void clear();

private:
    std::deque<double> begun_;
    std::size_t late_ = 0;  // the first so many
};

}  // namespace workbench
