#include "workbench/cli/serve/series_json.h"

#include <algorithm>

#include "workbench/cli/JsonWriter.h"
#include "workbench/cli/display_text.h"
#include "workbench/cobalt/number_text.h"

namespace workbench {

std::string seriesJson(const InstanceSeries& known, const Redaction& redact) {
    JsonWriter out;
    out.open('{');
    out.name("series");
    out.open('[');
    for (const InstanceSeries::Series& each : known.series) {
        out.open('{');
        out.member("field", redact(toUtf8(each.name)));
        out.member("points", each.points.size());
        out.member("texts", each.isText);
        out.close('}');
    }
    out.close(']');
    out.member("leftOut", known.leftOut);
    out.close('}');
    return out.take();
}

std::string pointsJson(const InstanceSeries::Series& series, const Redaction& redact) {
    JsonWriter out(JsonWriter::Layout::OneLine);
    out.open('{');
    out.name("times");
    out.open('[');
    for (const SeriesPoint& point : series.points)
        out.number(point.time);
    out.close(']');
    out.name("values");
    out.open('[');
    for (const SeriesPoint& point : series.points) {
        if (redact.hides(cobalt::formatNumber(point.value))) {
            out.null();
        } else {
            out.number(point.value);
        }
    }
    out.close(']');
    out.close('}');
    return out.take();
}

const InstanceSeries::Series* toldAs(const std::string& told, const InstanceSeries& known,
                                     const Redaction& redact) {
    const auto found =
        std::find_if(known.series.begin(), known.series.end(),
                     [&](const auto& each) { return redact(toUtf8(each.name)) == told; });
    return found == known.series.end() ? nullptr : &*found;
}

}  // namespace workbench
