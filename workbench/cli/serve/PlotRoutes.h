#pragma once

#include <cstdint>
#include <functional>

#include "workbench/cli/serve/SeriesLog.h"
#include "workbench/cli/serve/ServedScene.h"
#include "workbench/cobalt/Value.h"

namespace workbench {

/// Answers with numbers that can be drawn. Server's thread.
class PlotRoutes {
public:
    /// Both outlive it.
    PlotRoutes(ServedScene& served, const SeriesLog& series) : served_(served), series_(series) {}

    void addTo(Routes& routes);

private:
    static const Route<PlotRoutes> table[4];

    void tellColumns(const Call& call);
    void tellColumn(const Call& call);
    void tellAllSeries(const Call& call);
    void tellSeries(const Call& call);

    /// Answers on the thread of a job with what is made of a copy of the field.
    void onField(const Call& call,
                 std::function<std::string(const cobalt::Value&, const Redaction&)> write);

    /// Answers on the thread of a job with what is known of the instance's series.
    void onSeries(
        const Call& call,
        std::function<serve::WebResponse(const InstanceSeries&, const Redaction&)> answer);

    std::uint32_t writerOf(const Call& call) const;

    ServedScene& served_;
    const SeriesLog& series_;  // host's thread
};

}  // namespace workbench
