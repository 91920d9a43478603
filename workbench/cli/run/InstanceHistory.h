#pragma once

// What is known of the loads of one instance: those under way, the last one, and what changed.
// Owned by its LiveInstance. Times are in seconds since the run began.

#include <optional>
#include <string>

#include "workbench/cli/run/InstanceState.h"
#include "workbench/cli/run/LoadReport.h"
#include "workbench/cli/run/PendingLoads.h"

namespace workbench {

class InstanceHistory {
public:
    /// How often the instance loads; nothing when it waits for a button. Loads that are under way
    /// are no longer waited for.
    void setPeriod(std::optional<double> seconds);

    void began(double now);

    /// Notes an answer, and fills in what the report says of the loads before.
    void answered(LoadReport& report, double now);

    /// How many loads have become late: they take longer than three periods.
    std::size_t becameLate(double now);

    /// How long the oldest load is under way; nothing when none is.
    std::optional<double> underWay(double now) const { return pending_.age(now); }

    const std::optional<LoadReport>& last() const { return last_; }

    /// How many records a load wrote before their number changed last; nothing when it never did.
    std::optional<std::size_t> recordsBefore() const;

    bool isLate() const { return pending_.isAnyLate(); }

    /// What a closer look at a load that brought nothing has found. Whether that is news.
    bool explain(const std::string& why);

    void setLeftOver(std::size_t count) { leftOver_ = count; }

    /// Without the name.
    InstanceState stateAt(double now) const;

private:
    State judge(double now) const;
    std::string wordsFor(State state, double now) const;
    bool isStale(double now) const;

    PendingLoads pending_;
    std::optional<double> period_;
    std::optional<double> lastBegun_;
    std::optional<LoadReport> last_;
    double answeredAt_ = 0;
    std::optional<double> changedAt_;  // when the number of records changed
    std::size_t before_ = 0;           // what it was then
    std::size_t leftOver_ = 0;
    std::string why_;
};

}  // namespace workbench
