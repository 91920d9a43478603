#include "workbench/cli/serve/instance_json.h"

#include <array>

#include "workbench/cli/JsonWriter.h"
#include "workbench/cli/record_values.h"
#include "workbench/cli/serve/parameter_text.h"
#include "workbench/cli/serve/secret_texts.h"

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
    out.member("id", state.writer);
    out.member("revision", state.revision);
    out.name("state");
    out.text(names[static_cast<std::size_t>(state.state)]);
    count("records", state.records);
    count("before", state.before);
    count("leftOver", std::optional(state.leftOver));
    count("age", state.age);
    count("duration", state.duration);
    count("next", state.next);
    count("bytes", state.bytes);
    out.name("target");
    out.text(state.target);
    out.name("words");
    out.text(state.words);
    out.member("isDraft", state.isDraft);
    out.close('}');
}

void writeValue(const lumo::Parameter& parameter, int32_t index, const lumo::Record& record,
                const LiveInstance& instance, JsonWriter& out) {
    out.name(parameter.name);
    if (lumo::isText(parameter)) {
        out.text(
            shownText(parameter, std::string(record.text(index)), instance.presentRedaction()));
    } else if (parameter.kind == lumo::ParameterKind::Float) {
        out.number(shortest(record.number(index)));
    } else {
        out.number(record.integer(index));
    }
}

void writeValues(const lumo::ParameterTable& parameters, const LiveInstance& instance,
                 JsonWriter& out) {
    const lumo::Record record = instance.shownValues();
    out.name("values");
    out.open('{');
    forEachValue(parameters, [&](const lumo::Parameter& parameter, int32_t index) {
        if (!parameter.hidden) writeValue(parameter, index, record, instance, out);
    });
    out.close('}');
}

void writeShown(const lumo::Host& host, JsonWriter& out) {
    out.name("shown");
    out.open('[');
    for (int32_t index = 1; index <= host.parameters.size(); ++index) {
        const lumo::Parameter& parameter = host.parameters.at(index);
        const bool isShown =
            !parameter.hidden && !parameter.name.empty() && host.editor.isShown(parameter.name);
        if (isShown) out.text(parameter.name);
    }
    out.close(']');
}

}  // namespace

std::string detailsJson(const lumo::Host& host, const LiveInstance& instance) {
    JsonWriter out;
    out.open('{');
    out.name("name");
    out.text(instance.name());
    out.member("id", instance.writer());
    out.member("revision", instance.revision());
    out.member("isDraft", instance.isDraft());
    writeValues(host.parameters, instance, out);
    writeShown(host, out);
    out.close('}');
    return out.take();
}

std::string statesJson(const std::vector<InstanceState>& states) {
    JsonWriter out;
    out.open('[');
    for (const InstanceState& state : states)
        writeState(state, out);
    out.close(']');
    return out.take();
}

}  // namespace workbench
