#include "workbench/cli/serve/parameter_text.h"

#include <array>
#include <charconv>

#include "formats/text/number_text.h"
#include "formats/text/trim.h"

namespace workbench {

namespace {

using lumo::ParameterKind;

/// The entry of a choice, where its text says which one is meant.
std::string entryText(const lumo::Parameter& parameter, int32_t value) {
    const auto place = static_cast<std::size_t>(value);
    if (value < 0 || place >= parameter.entries.size()) return "";
    const std::string text(intake::trimmed(parameter.entries[place], " "));
    for (std::size_t i = 0; i < place; ++i) {
        if (intake::trimmed(parameter.entries[i], " ") == text) return "";
    }
    return text;
}

}  // namespace

double shortest(float number) {
    std::array<char, 32> digits{};
    const char* const end = std::to_chars(digits.data(), digits.data() + digits.size(), number).ptr;
    double value = 0;
    std::from_chars(digits.data(), end, value);
    return value;
}

std::string parameterText(const lumo::Parameter& parameter, int32_t index,
                          const lumo::Record& record) {
    if (lumo::isText(parameter)) return std::string(record.text(index));
    if (parameter.kind == ParameterKind::Float)
        return intake::shortestNumber(shortest(record.number(index)));
    const int32_t value = record.integer(index);
    if (parameter.kind == ParameterKind::Bool) return value == 0 ? "false" : "true";
    const std::string entry =
        parameter.kind == ParameterKind::Radio ? entryText(parameter, value) : "";
    return entry.empty() ? std::to_string(value) : entry;
}

void writeParameter(const lumo::Parameter& parameter, int32_t index, const lumo::Record& record,
                    JsonWriter& out) {
    const std::string text = parameterText(parameter, index, record);
    if (parameter.kind == ParameterKind::Bool) return out.boolean(text == "true");
    if (parameter.kind == ParameterKind::Float) return out.number(shortest(record.number(index)));
    const bool isNumber = !lumo::isText(parameter) && text == std::to_string(record.integer(index));
    if (isNumber) return out.number(record.integer(index));
    out.text(text);
}

}  // namespace workbench
