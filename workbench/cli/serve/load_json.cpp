#include "workbench/cli/serve/load_json.h"

namespace workbench {

void writeLoad(const LoadReport& report, const std::string& time, const std::string& line,
               JsonWriter& out) {
    out.member("instance", report.instance);
    out.member("outcome", nameOf(report.outcome));
    out.member("records", report.records);
    out.member("before", report.recordsBefore);
    out.member("bytes", report.bytes);
    out.member("duration", report.seconds);
    out.member("error", report.error);
    out.member("time", time);
    out.member("line", line);
}

}  // namespace workbench
