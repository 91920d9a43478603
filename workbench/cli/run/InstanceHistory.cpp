#include "workbench/cli/run/InstanceHistory.h"

#include <algorithm>

#include "workbench/cli/run/duration_text.h"

namespace workbench {

namespace {

constexpr double patience = 1;       // before a load is shown as being under way
constexpr double changeShown = 10;   // how long
constexpr double periodsToWait = 3;  // before a load is late, or what it brought is stale

}  // namespace

void InstanceHistory::setPeriod(std::optional<double> seconds) {
    period_ = seconds;
    lastBegun_.reset();
    pending_.clear();
}

void InstanceHistory::began(double now) {
    lastBegun_ = now;
    pending_.began(now);
}

void InstanceHistory::answered(LoadReport& report, double now) {
    report.seconds = pending_.answered(now);
    report.recordsBefore = last_ ? last_->records : 0;
    if (last_ && report.records != last_->records) {
        changedAt_ = now;
        before_ = last_->records;
    }
    if (report.outcome == LoadOutcome::Loaded) why_.clear();
    answeredAt_ = now;
    last_ = report;
}

std::size_t InstanceHistory::becameLate(double now) {
    return period_ ? pending_.becameLate(now, periodsToWait * *period_) : 0;
}

std::optional<std::size_t> InstanceHistory::recordsBefore() const {
    return changedAt_ ? std::optional(before_) : std::nullopt;
}

bool InstanceHistory::explain(const std::string& why) {
    const bool isNews = why != why_;
    why_ = why;
    return isNews;
}

bool InstanceHistory::isStale(double now) const {
    return period_ && now - answeredAt_ > periodsToWait * *period_;
}

State InstanceHistory::judge(double now) const {
    if (pending_.isAnyLate()) return State::Late;
    if (!last_) return pending_.age(now) || period_ ? State::Loading : State::Waiting;
    if (!isGood(last_->outcome)) return State::Failed;
    if (pending_.age(now).value_or(0) >= patience) return State::Loading;
    if (isStale(now)) return State::Stale;
    return last_->outcome == LoadOutcome::Empty ? State::Empty : State::Loaded;
}

std::string InstanceHistory::wordsFor(State state, double now) const {
    const std::string waited = calmDurationText(pending_.age(now).value_or(0));
    switch (state) {
        case State::Late:
            return "no answer for " + waited;
        case State::Loading:
            return "for " + waited;
        case State::Waiting:
            return "loads at the press of a button";
        case State::Failed:
            return why_.empty() ? last_->error : why_;
        default:
            return why_;
    }
}

InstanceState InstanceHistory::stateAt(double now) const {
    InstanceState shown;
    shown.state = judge(now);
    shown.words = wordsFor(shown.state, now);
    shown.leftOver = leftOver_;
    if (period_ && lastBegun_) shown.next = std::max(*lastBegun_ + *period_ - now, 0.0);
    if (!last_) return shown;
    shown.records = last_->records;
    if (changedAt_ && now - *changedAt_ < changeShown) shown.before = before_;
    shown.age = now - answeredAt_;
    shown.duration = last_->seconds;
    shown.bytes = last_->bytes;
    return shown;
}

}  // namespace workbench
