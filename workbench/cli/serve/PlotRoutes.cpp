#include "workbench/cli/serve/PlotRoutes.h"

#include <utility>

#include "workbench/cli/serve/responses.h"
#include "workbench/cli/serve/series_json.h"
#include "workbench/cli/serve/store_columns.h"
#include "workbench/cli/serve/store_view.h"

namespace workbench {

using serve::WebResponse;

const Route<PlotRoutes> PlotRoutes::table[] = {
    {"GET", "store/*/columns", &PlotRoutes::tellColumns},
    {"GET", "store/*/column/*", &PlotRoutes::tellColumn},
    {"GET", "series", &PlotRoutes::tellAllSeries},
    {"GET", "series/*", &PlotRoutes::tellSeries},
};

void PlotRoutes::addTo(Routes& routes) {
    routes.add(*this, table);
}

void PlotRoutes::onField(const Call& call,
                         std::function<std::string(const cobalt::Value&, const Redaction&)> write) {
    served_.addJob(
        WaitsFor::Nothing, call.reply,
        [this, name = call.name(), write = std::move(write)](const std::stop_token& stop) {
            const auto redact = served_.redaction(stop);
            if (!redact) return refused(503, "The workbench ends.");
            const auto store = served_.copyOfStore(
                [&](const cobalt::Field& field) { return isToldAs(name, field, *redact); }, stop);
            if (store == nullptr) return refused(503, "The workbench ends.");
            const cobalt::Field* const field = findTold(*store, name, *redact);
            if (field == nullptr) return refused(404, "The store has no such field.");
            return ok(write(field->value(), *redact));
        });
}

void PlotRoutes::tellColumns(const Call& call) {
    onField(call, columnsJson);
}

void PlotRoutes::tellColumn(const Call& call) {
    onField(call, [column = call.names[1]](const cobalt::Value& records, const Redaction& redact) {
        return columnJson(records, column, redact);
    });
}

/// Of the instance that the call names; the host's thread.
std::uint32_t PlotRoutes::writerOf(const Call& call) const {
    const LiveInstance* const instance = served_.live.find(call.request.parameter("instance"));
    return instance == nullptr ? 0 : instance->writer();
}

void PlotRoutes::onSeries(
    const Call& call, std::function<WebResponse(const InstanceSeries&, const Redaction&)> answer) {
    served_.addJob(WaitsFor::Nothing, call.reply,
                   [this, call, answer = std::move(answer)](const std::stop_token& stop) {
                       const auto redact = served_.redaction(stop);
                       const auto known = served_.queue.ask<InstanceSeries>(
                           [&, this] { return series_.of(writerOf(call)); }, stop);
                       if (!redact || !known) return refused(503, "The workbench ends.");
                       return answer(*known, *redact);
                   });
}

void PlotRoutes::tellAllSeries(const Call& call) {
    onSeries(call, [](const InstanceSeries& known, const Redaction& redact) {
        return ok(seriesJson(known, redact));
    });
}

void PlotRoutes::tellSeries(const Call& call) {
    onSeries(call, [told = call.name()](const InstanceSeries& known, const Redaction& redact) {
        const auto* const series = toldAs(told, known, redact);
        return series != nullptr ? ok(pointsJson(*series, redact))
                                 : refused(404, "The instance has written no such number.");
    });
}

}  // namespace workbench
