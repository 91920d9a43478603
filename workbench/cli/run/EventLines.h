#pragma once

#include "workbench/cli/run/RunView.h"

namespace workbench {

/// Prints a line for each event, with its time and its instance.
class EventLines final : public RunView {
public:
    /// `tellsEach`: of loads that are like the one before, too.
    explicit EventLines(bool tellsEach) : tellsEach_(tellsEach) {}

    void tell(const LoadEvent& event, const std::string& advice, double now) override;
    void explain(const std::string& instance, const std::string& why, double now) override;
    void note(const std::string& sentence, double now) override;
    void frame(const LiveScene&, double) override {}
    void finish(const LiveScene&, double) override {}

private:
    const bool tellsEach_;
};

/// What is told of a load that is not as the one before; empty when it is. `arrow` stands between
/// two numbers of records.
std::string wordsOf(const LoadEvent& event, const std::string& arrow);

}  // namespace workbench
