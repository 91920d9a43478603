#include "workbench/cli/serve/HistoryRoutes.h"

#include <cstdlib>

#include "workbench/cli/serve/responses.h"

namespace workbench {

namespace {

constexpr std::size_t usualCount = 100;

}  // namespace

const Route<HistoryRoutes> HistoryRoutes::table[] = {
    {"GET", "loads", &HistoryRoutes::tellLatest},
    {"GET", "instances/*/history", &HistoryRoutes::tellHistory},
    {"GET", "instances/*/history/*", &HistoryRoutes::tellLoad},
};

void HistoryRoutes::addTo(Routes& routes) {
    routes.add(*this, table);
}

void HistoryRoutes::tellLatest(const Call& call) {
    served_.onFrame(call.reply, [this] { return ok("{\"loads\": " + loads_.latest() + "}\n"); });
}

void HistoryRoutes::tellHistory(const Call& call) {
    served_.onInstance(call, [this, call](const LiveInstance& instance) {
        call.reply(ok(loads_.history(instance.writer(), numberIn(call.request, "from", 0),
                                     numberIn(call.request, "count", usualCount))));
    });
}

void HistoryRoutes::tellLoad(const Call& call) {
    served_.onInstance(call, [this, call](const LiveInstance& instance) {
        const auto load = std::strtoull(call.names[1].c_str(), nullptr, 10);
        const auto explained = loads_.explained(instance.writer(), load);
        call.reply(explained ? ok(*explained)
                             : refused(404, "This load is not kept, or not any more."));
    });
}

}  // namespace workbench
