#include "workbench/cli/serve/Ladders.h"

#include <algorithm>
#include <exception>
#include <string>
#include <utility>

#include "formats/text/trim.h"
#include "workbench/cli/JsonWriter.h"
#include "workbench/cli/record_values.h"
#include "workbench/cli/scene_child.h"

namespace workbench {

namespace {

constexpr double interval = 60;  // between two of an instance

bool isExplainable(LoadOutcome outcome) {
    return outcome == LoadOutcome::Failed || outcome == LoadOutcome::Empty ||
           outcome == LoadOutcome::NotExecuted;
}

std::string explanationBy(const SceneChild& child, const std::stop_token& stop) {
    try {
        return std::string(intake::trimmed(ask(child, stop).out, " \r\n"));
    } catch (const std::exception&) {
        return "";  // the load stays without
    }
}

}  // namespace

void Ladders::note(const LoadEvent& event, std::uint64_t load, double now) {
    if (event.report.outcome == LoadOutcome::Late) return;
    const bool isBad = isExplainable(event.report.outcome);
    const bool wasBad = std::exchange(isBad_[event.writer], isBad);
    const auto asked = askedAt_.find(event.writer);
    const bool isDue = asked == askedAt_.end() || now - asked->second >= interval;
    if (!isBad || wasBad || !isDue) return;
    askedAt_[event.writer] = now;
    wanted_.push_back({event.writer, load});
}

/// One that has a load under way waits: its source would be asked twice at a time.
void Ladders::runFrame(double now) {
    if (isBusy_) return;
    for (auto each = wanted_.begin(); each != wanted_.end(); ++each) {
        const LiveInstance* const instance = find(each->writer);
        if (instance != nullptr && instance->history().underWay(now)) continue;
        if (instance != nullptr) isBusy_ = start(*each, *instance);
        wanted_.erase(each);
        return;
    }
}

LiveInstance* Ladders::find(std::uint32_t writer) const {
    for (const auto& instance : served_.live.instances()) {
        if (instance->writer() == writer) return instance.get();
    }
    return nullptr;
}

bool Ladders::start(const Wanted& wanted, const LiveInstance& instance) {
    SceneChild child{"explain",
                     {"--out", "json"},
                     sceneOf(instance.name(), served_.host.parameters, instance.values()),
                     served_.options.plugin,
                     served_.options.fontEncoding};
    child.environment = served_.live.variablesFor(instance);
    return served_.addJob(WaitsFor::Child, [this, child, wanted](const std::stop_token& stop) {
        const std::string explanation = explanationBy(child, stop);
        const auto keep = [&] {
            this->keep(wanted, explanation);
            return true;
        };
        served_.queue.ask<bool>(keep, stop);
    });
}

void Ladders::keep(const Wanted& wanted, const std::string& explanation) {
    isBusy_ = false;
    loads_.explain(wanted.writer, wanted.load, explanation);
    const LiveInstance* const instance = find(wanted.writer);
    if (instance == nullptr || explanation.empty()) return;
    JsonWriter name(JsonWriter::Layout::OneLine);
    name.text(instance->name());
    served_.publish("\"type\": \"ladder\", \"name\": " + name.take() +
                    ", \"id\": " + std::to_string(wanted.load));
}

}  // namespace workbench
