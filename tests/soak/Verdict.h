#pragma once

#include <cstdio>

#include "tests/soak/Holdings.h"
#include "tests/soak/Trend.h"
#include "tests/soak/WatchedInstance.h"

namespace intake {

/// What may show for a growth that is none: so much over the whole run, or so much a minute,
/// whichever is more.
struct Noise {
    double altogether;
    double perMinute;
};

/// Takes the figures of a run, prints them once a minute, and says at the end whether the run was a
/// good one. The bounds stand in its source.
class Verdict {
public:
    /// Reports to `out`, which outlives it.
    Verdict(double seconds, std::FILE* out);

    /// The figures of a moment; called about once a second.
    void add(double atSecond, const Holdings& holdings, const Tally& tally);

    /// Prints how the run went. `behind` instances never showed the last version of their source.
    void report(const Tally& tally, size_t behind);

    bool isGood() const { return isGood_; }

private:
    void check(const char* what, const Trend& trend, Noise noise, bool counts);

    std::FILE* const out_;
    const double minutes_;
    const double settledAt_;  // minutes
    double nextLine_ = 1;     // minutes
    Trend resident_;
    Trend allocated_;
    Trend threads_;
    Trend descriptors_;
    bool isGood_ = true;
};

}  // namespace intake
