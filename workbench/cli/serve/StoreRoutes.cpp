#include "workbench/cli/serve/StoreRoutes.h"

#include <utility>

#include "workbench/cli/serve/responses.h"
#include "workbench/cli/serve/store_view.h"

namespace workbench {

namespace {

constexpr std::size_t usualCount = 200;

}  // namespace

const Route<StoreRoutes> StoreRoutes::table[] = {
    {"GET", "store", &StoreRoutes::tellFields},
    {"GET", "store/*", &StoreRoutes::tellEntries},
};

void StoreRoutes::addTo(Routes& routes) {
    routes.add(*this, table);
}

// Searching texts for all secrets of a scene takes long; so that is the job's.
void StoreRoutes::tellFields(const Call& call) {
    served_.addJob(WaitsFor::Nothing, call.reply, [this](const std::stop_token& stop) {
        const auto redact = served_.redaction(stop);
        const auto shown = served_.queue.ask<ShownFields>(
            [this] { return shownFields(served_.live, served_.host.store.core()); }, stop);
        if (!redact || !shown) return refused(503, "The workbench ends.");
        return ok(fieldsJson(*shown, *redact));
    });
}

void StoreRoutes::tellEntries(const Call& call) {
    const std::size_t from = numberIn(call.request, "from", 0);
    const std::size_t count = numberIn(call.request, "count", usualCount);
    const auto tell = [this, name = call.name(), from, count](const std::stop_token& stop) {
        const auto redact = served_.redaction(stop);
        if (!redact) return refused(503, "The workbench ends.");
        using Found = std::optional<ShownEntries>;
        const auto shown = served_.queue.ask<Found>(
            [&, this]() -> Found {
                const auto* const field = findTold(served_.host.store.core(), name, *redact);
                if (field == nullptr) return std::nullopt;
                return shownEntries(served_.live, *field, from, count);
            },
            stop);
        if (!shown) return refused(503, "The workbench ends.");
        if (!*shown) return refused(404, "The store has no such field.");
        return ok(entriesJson(**shown, *redact));
    };
    served_.addJob(WaitsFor::Nothing, call.reply, tell);
}

}  // namespace workbench
