#include "workbench/cli/serve/instance_json.h"

#include <array>

#include "workbench/cli/JsonWriter.h"

namespace workbench {

namespace {

// In the order of State.
constexpr std::array names{"failed", "late", "empty", "stale", "loading", "waiting", "loaded"};

void writeState(const InstanceState& state, JsonWriter& out) {
    const auto count = [&](const char* name, const auto& value) {
        out.name(name);
        if (value) {
            out.number(static_cast<double>(*value));
        } else {
            out.null();
        }
    };
    out.open('{');
    out.name("name");
    out.text(state.name);
    out.name("state");
    out.text(names[static_cast<std::size_t>(state.state)]);
    count("records", state.records);
    count("before", state.before);
    count("leftOver", std::optional(state.leftOver));
    count("age", state.age);
    count("duration", state.duration);
    count("next", state.next);
    out.name("words");
    out.text(state.words);
    out.close('}');
}

}  // namespace

std::string statesJson(const std::vector<InstanceState>& states) {
    JsonWriter out;
    out.open('[');
    for (const InstanceState& state : states)
        writeState(state, out);
    out.close(']');
    return out.take();
}

}  // namespace workbench
