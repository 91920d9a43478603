#include "workbench/probe/explain/Ladder.h"

#include <algorithm>

namespace probe {

namespace {

constexpr std::array<const char*, stageCount> names{"settings",  "address", "fetched", "format",
                                                    "selection", "key",     "rows",    "script",
                                                    "store",     "action"};

Step stepOf(State state, std::string seen, std::string cause = "", std::string next = "") {
    Step step;
    step.state = state;
    step.seen = std::move(seen);
    step.cause = std::move(cause);
    step.next = std::move(next);
    return step;
}

}  // namespace

void Ladder::ok(Stage stage, std::string seen) {
    add(stage, stepOf(State::Ok, std::move(seen)));
}

void Ladder::warn(Stage stage, std::string seen, std::string cause, std::string next) {
    add(stage, stepOf(State::Warning, std::move(seen), std::move(cause), std::move(next)));
}

void Ladder::fail(Stage stage, std::string seen, std::string cause, std::string next) {
    add(stage, stepOf(State::Failed, std::move(seen), std::move(cause), std::move(next)));
}

void Ladder::add(Stage stage, Step step) {
    Step& present = steps_[static_cast<std::size_t>(stage)];
    if (step.state > present.state) present = std::move(step);
}

std::optional<Stage> Ladder::failed() const {
    const auto* const first = std::find_if(
        steps_.begin(), steps_.end(), [](const Step& step) { return step.state == State::Failed; });
    if (first == steps_.end()) return std::nullopt;
    return static_cast<Stage>(first - steps_.begin());
}

void Ladder::cut() {
    const auto first = failed();
    if (!first) return;
    std::fill(steps_.begin() + static_cast<std::ptrdiff_t>(*first) + 1, steps_.end(), Step{});
}

const char* nameOf(Stage stage) {
    return names[static_cast<std::size_t>(stage)];
}

}  // namespace probe
