#include "workbench/cli/parameter_values.h"

#include <charconv>
#include <optional>
#include <string>
#include <vector>

#include "formats/text/ascii.h"
#include "formats/text/trim.h"
#include "workbench/cli/UsageError.h"
#include "workbench/probe/nearest_name.h"

namespace workbench {

namespace {

using lumo::Parameter;
using lumo::ParameterKind;

template <typename Number>
std::optional<Number> parsed(std::string_view text) {
    Number number{};
    const auto read = std::from_chars(text.data(), text.data() + text.size(), number);
    if (read.ec != std::errc() || read.ptr != text.data() + text.size()) return std::nullopt;
    return number;
}

std::string shortest(double number) {
    char digits[32];
    const auto written = std::to_chars(digits, digits + sizeof digits, static_cast<float>(number));
    return std::string(digits, written.ptr);
}

[[noreturn]] void reject(const Parameter& parameter, std::string_view value,
                         const std::string& fitting) {
    throw UsageError("\"" + parameter.name + "\" cannot be \"" + std::string(value) +
                     "\": it takes " + fitting + ".");
}

std::string range(const Parameter& parameter) {
    return "from " + shortest(parameter.minimum) + " to " + shortest(parameter.maximum);
}

/// The query type HTML is a number without an entry in the plugin's list.
std::vector<std::string_view> entriesOf(const Parameter& parameter) {
    std::vector<std::string_view> entries;
    for (const std::string& entry : parameter.entries)
        entries.push_back(intake::trimmed(entry, " "));
    if (parameter.name == "queryMode") entries.push_back("HTML");
    return entries;
}

int32_t switchValue(const Parameter& parameter, std::string_view value) {
    const std::string lower = intake::lowerCase(value);
    if (lower == "1" || lower == "true") return 1;
    if (lower == "0" || lower == "false") return 0;
    reject(parameter, value, "0, 1, true or false");
}

int32_t choiceValue(const Parameter& parameter, std::string_view value) {
    const std::vector<std::string_view> entries = entriesOf(parameter);
    std::string list;
    for (std::size_t i = 0; i < entries.size(); ++i) {
        if (intake::equalIgnoringCase(entries[i], intake::trimmed(value, " ")))
            return static_cast<int32_t>(i);
        list += std::string(entries[i]) + ", ";
    }
    const int32_t largest = static_cast<int32_t>(entries.size()) - 1;
    const auto index = parsed<int32_t>(value);
    if (index && *index >= 0 && *index <= largest) return *index;
    reject(parameter, value, list + "or an index from 0 to " + std::to_string(largest));
}

template <typename Number>
Number numberValue(const Parameter& parameter, std::string_view value, const char* kind) {
    const auto number = parsed<Number>(value);
    const bool fits = number && static_cast<double>(*number) >= parameter.minimum &&
                      static_cast<double>(*number) <= parameter.maximum;
    if (!fits) reject(parameter, value, kind + range(parameter));
    return *number;
}

std::string_view textValue(const Parameter& parameter, std::string_view value) {
    const auto longest = static_cast<std::size_t>(parameter.capacity) - 1;
    if (value.size() > longest)
        throw UsageError("\"" + parameter.name + "\" takes at most " + std::to_string(longest) +
                         " bytes; this text has " + std::to_string(value.size()) + ".");
    if (value.find('\0') != std::string_view::npos)
        throw UsageError("\"" + parameter.name + "\" cannot hold a text with a zero byte in it.");
    return value;
}

[[noreturn]] void rejectName(const lumo::ParameterTable& parameters, std::string_view name) {
    std::vector<std::string> names;
    for (int32_t index = 1; index <= parameters.size(); ++index) {
        if (lumo::hasValue(parameters.at(index))) names.push_back(parameters.at(index).name);
    }
    throw UsageError("There is no parameter \"" + std::string(name) + "\". Did you mean \"" +
                     probe::nearestName(name, names) + "\"?");
}

}  // namespace

int32_t setParameter(const lumo::ParameterTable& parameters, lumo::Record& record,
                     std::string_view name, std::string_view value) {
    const auto index = parameters.find(name);
    if (!index) rejectName(parameters, name);
    const Parameter& parameter = parameters.at(*index);
    switch (parameter.kind) {
        case ParameterKind::Bool:
            record.setInteger(*index, switchValue(parameter, value));
            break;
        case ParameterKind::Radio:
            record.setInteger(*index, choiceValue(parameter, value));
            break;
        case ParameterKind::Int:
            record.setInteger(*index, numberValue<int32_t>(parameter, value, "a whole number "));
            break;
        case ParameterKind::Float:
            record.setNumber(*index, numberValue<float>(parameter, value, "a number "));
            break;
        case ParameterKind::PushButton:
        case ParameterKind::UserData:
            throw UsageError("\"" + parameter.name + "\" is a button; it has no value.");
        default:
            record.setText(*index, textValue(parameter, value));
    }
    return *index;
}

}  // namespace workbench
