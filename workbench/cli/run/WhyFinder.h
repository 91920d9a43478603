#pragma once

#include <memory>

#include "workbench/cli/Options.h"
#include "workbench/cli/run/RunView.h"

namespace workbench {

/// Finds out why instances bring nothing, one at a time and each at most once a minute, while the
/// run goes on. Main thread.
class WhyFinder {
public:
    virtual ~WhyFinder() = default;

    /// Tells what was found, and looks at the next instance if there is one. Never waits.
    virtual void runFrame(LiveScene& scene, RunView& view, double now) = 0;
};

/// Throws UsageError where loads cannot be explained.
std::unique_ptr<WhyFinder> makeWhyFinder(const lumo::Host& host, const Options& options);

}  // namespace workbench
