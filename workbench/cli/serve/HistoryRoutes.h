#pragma once

#include "workbench/cli/serve/LoadLog.h"
#include "workbench/cli/serve/ServedScene.h"

namespace workbench {

/// Answers what a page asks of the loads that were. Server's thread.
class HistoryRoutes {
public:
    /// Both outlive it.
    HistoryRoutes(ServedScene& served, const LoadLog& loads) : served_(served), loads_(loads) {}

    void addTo(Routes& routes);

private:
    static const Route<HistoryRoutes> table[3];

    void tellLatest(const Call& call);
    void tellHistory(const Call& call);
    void tellLoad(const Call& call);

    ServedScene& served_;
    const LoadLog& loads_;  // host's thread
};

}  // namespace workbench
