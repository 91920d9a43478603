#include "workbench/cli/serve/ReportRoutes.h"

#include "workbench/cli/serve/ReportPage.h"
#include "workbench/cli/serve/file_list.h"
#include "workbench/cli/serve/responses.h"

namespace workbench {

namespace {

constexpr std::size_t usualCount = 100;

}  // namespace

const Route<ReportRoutes> ReportRoutes::table[] = {
    {"GET", "reports", &ReportRoutes::tellFiles},
    {"GET", "reports/*", &ReportRoutes::tellReport},
};

void ReportRoutes::addTo(Routes& routes) {
    routes.add(*this, table);
}

void ReportRoutes::tellFiles(const Call& call) {
    served_.addJob(WaitsFor::Disk, call.reply, [this](const std::stop_token& stop) {
        return ok(fileListJson(folder_.list({".jsonl", longestReport, isReport}, stop)));
    });
}

void ReportRoutes::tellReport(const Call& call) {
    const ReportPage::Wanted wanted{call.request.parameter("instance"),
                                    numberIn(call.request, "from", 0),
                                    numberIn(call.request, "count", usualCount)};
    const auto tell = [this, wanted, name = call.name()](const std::stop_token& stop) {
        const auto file = folder_.find(name);
        std::error_code error;
        if (!file || !std::filesystem::is_regular_file(*file, error) || !isReport(*file))
            return refused(404, "There is no such report.");
        const auto redact = served_.redaction(stop);
        if (!redact) return refused(503, "The workbench ends.");
        return ok(ReportPage(indexes_.of(file->string(), stop), wanted).json(*redact));
    };
    served_.addJob(WaitsFor::Report, call.reply, tell);
}

}  // namespace workbench
