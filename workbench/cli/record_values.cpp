#include "workbench/cli/record_values.h"

#include "workbench/cli/JsonWriter.h"

namespace workbench {

using lumo::Parameter;
using lumo::ParameterKind;

namespace {

void writeValue(const Parameter& parameter, int32_t index, const lumo::Record& record,
                JsonWriter& out) {
    out.name(parameter.name);
    if (lumo::isText(parameter)) {
        out.text(record.text(index));
    } else if (parameter.kind == ParameterKind::Float) {
        out.number(static_cast<double>(record.number(index)));
    } else {
        out.number(record.integer(index));
    }
}

}  // namespace

void copyValue(const Parameter& parameter, int32_t index, const lumo::Record& from,
               lumo::Record& to) {
    if (lumo::isText(parameter)) {
        to.setText(index, from.text(index));
    } else if (parameter.kind == ParameterKind::Float) {
        to.setNumber(index, from.number(index));
    } else {
        to.setInteger(index, from.integer(index));
    }
}

void copyValues(const lumo::ParameterTable& parameters, const lumo::Record& from,
                lumo::Record& to) {
    forEachValue(parameters, [&](const Parameter& parameter, int32_t index) {
        copyValue(parameter, index, from, to);
    });
}

bool isSameValue(const Parameter& parameter, int32_t index, const lumo::Record& a,
                 const lumo::Record& b) {
    if (lumo::isText(parameter)) return a.text(index) == b.text(index);
    if (parameter.kind == ParameterKind::Float)
        return !(a.number(index) < b.number(index)) && !(b.number(index) < a.number(index));
    return a.integer(index) == b.integer(index);
}

std::string textParameter(const char* name, const lumo::ParameterTable& parameters,
                          const lumo::Record& record) {
    const auto index = parameters.find(name);
    return index ? std::string(record.text(*index)) : "";
}

std::string sceneOf(const std::string& name, const lumo::ParameterTable& parameters,
                    const lumo::Record& record) {
    JsonWriter out;
    out.open('{');
    out.name("instances");
    out.open('[');
    out.open('{');
    out.name("name");
    out.text(name);
    out.name("parameters");
    out.open('{');
    forEachValue(parameters, [&](const Parameter& parameter, int32_t index) {
        writeValue(parameter, index, record, out);
    });
    out.close('}');
    out.close('}');
    out.close(']');
    out.close('}');
    return out.take();
}

}  // namespace workbench
