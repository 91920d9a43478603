#include "workbench/cli/serve/PlotRoutes.h"

#include <utility>

#include "workbench/cli/serve/responses.h"
#include "workbench/cli/serve/store_columns.h"

namespace workbench {

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
            const auto store = served_.copyOfStore(
                [&](const cobalt::Field& field) { return field.name() == name; }, stop);
            if (!redact || store == nullptr) return refused(503, "The workbench ends.");
            const cobalt::Field* const field = std::as_const(*store).find(name);
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

void PlotRoutes::tellAllSeries(const Call& call) {
    served_.onFrame(call.reply, [this] { return ok(series_.json(served_.live)); });
}

void PlotRoutes::tellSeries(const Call& call) {
    served_.onFrame(call.reply, [this, call] {
        const LiveInstance* const instance = served_.live.find(call.request.parameter("instance"));
        const auto found = instance == nullptr ? std::nullopt
                                               : series_.json(instance->writer(), call.name(),
                                                              served_.live.redaction());
        return found ? ok(*found) : refused(404, "The instance has written no such number.");
    });
}

}  // namespace workbench
