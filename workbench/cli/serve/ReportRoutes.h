#pragma once

#include "workbench/cli/serve/ReportIndex.h"
#include "workbench/cli/serve/ServedScene.h"
#include "workbench/cli/serve/StartFolder.h"

namespace workbench {

/// Answers what a page asks of reports of loads that were written to files. Server's thread.
class ReportRoutes {
public:
    /// Both outlive it.
    ReportRoutes(ServedScene& served, const StartFolder& folder)
        : served_(served), folder_(folder) {}

    void addTo(Routes& routes);

private:
    static const Route<ReportRoutes> table[2];

    void tellFiles(const Call& call);
    void tellReport(const Call& call);

    ServedScene& served_;
    const StartFolder& folder_;
    ReportIndexes indexes_;  // for jobs that wait for a report
};

}  // namespace workbench
