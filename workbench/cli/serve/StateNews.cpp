#include "workbench/cli/serve/StateNews.h"

#include <utility>

#include "workbench/cli/JsonWriter.h"
#include "workbench/cli/serve/instance_json.h"

namespace workbench {

namespace {

/// Whether a page has to be told: ages go on by themselves there.
bool isSame(const InstanceState& one, const InstanceState& other) {
    return one.name == other.name && one.state == other.state && one.records == other.records &&
           one.before == other.before && one.leftOver == other.leftOver &&
           one.words == other.words && one.target == other.target && one.isDraft == other.isDraft &&
           one.revision == other.revision;
}

}  // namespace

std::vector<std::string> StateNews::take(LiveScene& scene, double now) {
    std::map<std::uint32_t, InstanceState> states;
    std::vector<InstanceState> changed;
    for (const auto& instance : scene.instances()) {
        const std::uint32_t writer = instance->writer();
        const InstanceState& state = states[writer] = instance->stateAt(now);
        const auto told = told_.find(writer);
        const bool isKnown = told != told_.end() && isSame(told->second, state);
        if (!isKnown || noted_.contains(writer)) changed.push_back(state);
    }
    // First what has gone: another one may have come under its name.
    std::vector<std::string> events;
    const std::string gone = takeGone(states);
    if (!gone.empty()) events.push_back(gone);
    if (!changed.empty())
        events.push_back("\"type\": \"instances\", \"instances\": " + statesJson(changed));
    told_ = std::move(states);
    noted_.clear();
    return events;
}

/// Names that those do not bear any more that bore them.
std::string StateNews::takeGone(const std::map<std::uint32_t, InstanceState>& states) {
    JsonWriter names(JsonWriter::Layout::OneLine);
    bool isAny = false;
    names.open('[');
    for (const auto& [writer, told] : told_) {
        const auto state = states.find(writer);
        if (state != states.end() && state->second.name == told.name) continue;
        names.text(told.name);
        isAny = true;
    }
    names.close(']');
    return isAny ? "\"type\": \"gone\", \"names\": " + names.take() : "";
}

}  // namespace workbench
