#include "workbench/cli/parameter_list.h"

#include <charconv>

#include "formats/text/trim.h"
#include "workbench/cli/JsonWriter.h"
#include "workbench/cli/Table.h"

namespace workbench {

namespace {

using lumo::Parameter;
using lumo::ParameterKind;

std::string numberText(double number) {
    char digits[32];
    return std::string(digits, std::to_chars(digits, digits + sizeof digits, number).ptr);
}

bool hasRange(const Parameter& parameter) {
    return parameter.kind == ParameterKind::Int || parameter.kind == ParameterKind::Float;
}

std::string defaultText(const Parameter& parameter) {
    if (!lumo::hasValue(parameter)) return "";
    return lumo::isText(parameter) ? parameter.initialText : numberText(parameter.initialNumber);
}

std::string entryList(const Parameter& parameter) {
    std::string list;
    for (std::size_t i = 0; i < parameter.entries.size(); ++i) {
        if (i > 0) list += ", ";
        list += std::to_string(i) + " " + std::string(intake::trimmed(parameter.entries[i], " "));
    }
    return list;
}

std::string limits(const Parameter& parameter) {
    if (hasRange(parameter))
        return numberText(parameter.minimum) + " to " + numberText(parameter.maximum);
    if (lumo::isText(parameter))
        return "at most " + std::to_string(parameter.capacity - 1) + " bytes";
    switch (parameter.kind) {
        case ParameterKind::Bool:
            return "0 or 1";
        case ParameterKind::Radio:
            return entryList(parameter);
        case ParameterKind::PushButton:
            return "action " + std::to_string(parameter.action);
        default:
            return std::to_string(parameter.userDataSize) + " bytes";
    }
}

std::string kindText(const Parameter& parameter) {
    return std::string(lumo::kindName(parameter.kind)) + (parameter.hidden ? ", hidden" : "");
}

void writeLimits(const Parameter& parameter, JsonWriter& out) {
    if (lumo::isText(parameter)) {
        out.name("maximumBytes");
        out.number(parameter.capacity - 1);
    } else if (hasRange(parameter)) {
        out.name("minimum");
        out.number(parameter.minimum);
        out.name("maximum");
        out.number(parameter.maximum);
    } else if (parameter.kind == ParameterKind::PushButton) {
        out.name("action");
        out.number(parameter.action);
    } else if (parameter.kind == ParameterKind::UserData) {
        out.name("bytes");
        out.number(parameter.userDataSize);
    }
}

void writeEntries(const Parameter& parameter, JsonWriter& out) {
    if (parameter.kind != ParameterKind::Radio) return;
    out.name("entries");
    out.open('[');
    for (const std::string& entry : parameter.entries)
        out.text(entry);
    out.close(']');
}

void writeDefault(const Parameter& parameter, JsonWriter& out) {
    if (!lumo::hasValue(parameter)) return;
    out.name("default");
    if (lumo::isText(parameter)) {
        out.text(parameter.initialText);
    } else {
        out.number(parameter.initialNumber);
    }
}

void writeParameter(const Parameter& parameter, int32_t hostIndex, JsonWriter& out) {
    out.open('{');
    out.name("number");
    out.number(hostIndex);
    out.name("name");
    out.text(parameter.name);
    out.name("label");
    out.text(parameter.label);
    out.name("type");
    out.text(lumo::kindName(parameter.kind));
    writeDefault(parameter, out);
    writeLimits(parameter, out);
    writeEntries(parameter, out);
    out.name("hidden");
    out.boolean(parameter.hidden);
    out.name("persistent");
    out.boolean(parameter.persistent);
    out.close('}');
}

}  // namespace

std::string parameterTable(const lumo::ParameterTable& parameters) {
    Table table{"", {"number", "name", "label", "type", "default", "limits"}, {}, 0};
    for (int32_t index = 1; index <= parameters.size(); ++index) {
        const Parameter& parameter = parameters.at(index);
        table.rows.push_back({std::to_string(index), parameter.name,
                              std::string(intake::trimmed(parameter.label, " ")),
                              kindText(parameter), defaultText(parameter), limits(parameter)});
    }
    // A list to look things up in is never cut, whatever the terminal's width.
    return table.print({unlimited, unlimited, unlimited});
}

std::string parameterJson(const lumo::ParameterTable& parameters) {
    JsonWriter out;
    out.open('[');
    for (int32_t index = 1; index <= parameters.size(); ++index)
        writeParameter(parameters.at(index), index, out);
    out.close(']');
    return out.take();
}

}  // namespace workbench
