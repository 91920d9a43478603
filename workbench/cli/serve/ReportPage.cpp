#include "workbench/cli/serve/ReportPage.h"

#include <algorithm>

#include "workbench/cli/serve/LineReader.h"
#include "workbench/cli/serve/load_json.h"

namespace workbench {

namespace {

constexpr std::size_t mostInPage = 500;

void writeSummary(const std::string& name, const ReportIndex::Summary& summary,
                  const Redaction& redact, JsonWriter& out) {
    out.open('{');
    out.member("name", redact(name));
    out.member("loads", summary.loads);
    out.member("bad", summary.bad);
    out.member("first", redact(summary.first));
    out.member("last", redact(summary.last));
    out.close('}');
}

void writeReported(const ReportedLoad& load, const Redaction& redact, JsonWriter& out) {
    LoadReport report = load.report;
    report.instance = redact(report.instance);
    report.error = redact(report.error);
    out.open('{');
    writeLoad(report, redact(load.time), "", out);
    out.close('}');
}

}  // namespace

ReportPage::ReportPage(const ReportIndex& index, const Wanted& wanted) : index_(index) {
    const std::vector<std::uint32_t> places = index.placesOf(wanted.instance);
    count_ = places.size();
    const std::size_t first = std::min(wanted.from, count_);
    const std::size_t last = first + std::min({wanted.count, mostInPage, count_ - first});
    LineReader reader(index.file(), longestReportFile, longestReport);
    std::string line;
    for (std::size_t i = first; i < last; ++i) {
        reader.seek(places[i]);
        auto load = reader.next(line) ? reportedLoad(line) : std::nullopt;
        if (load) loads_.push_back(std::move(*load));
    }
}

std::string ReportPage::json(const Redaction& redact) const {
    JsonWriter out;
    out.open('{');
    out.name("instances");
    out.open('[');
    for (const auto& [name, summary] : index_.instances())
        writeSummary(name, summary, redact, out);
    out.close(']');
    out.member("count", count_);
    out.name("loads");
    out.open('[');
    for (const ReportedLoad& load : loads_)
        writeReported(load, redact, out);
    out.close(']');
    out.member("unreadable", index_.unreadable());
    out.name("endedEarly");
    out.boolean(index_.isCut());
    out.close('}');
    return out.take();
}

}  // namespace workbench
