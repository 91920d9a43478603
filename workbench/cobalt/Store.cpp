#include "workbench/cobalt/Store.h"

#include <utility>

#include "workbench/cobalt/script_parser.h"

namespace cobalt {

Field* Store::find(std::string_view name) {
    const auto found = byName_.find(name);
    return found == byName_.end() ? nullptr : found->second;
}

const Field* Store::find(std::string_view name) const {
    const auto found = byName_.find(name);
    return found == byName_.end() ? nullptr : found->second;
}

Field& Store::define(std::string_view name) {
    if (Field* field = find(name)) return *field;
    Field& field = fields_.emplace_back(std::string(name));
    byName_.emplace(field.name(), &field);
    return field;
}

std::optional<ScriptError> Store::execute(std::string_view script) {
    auto parsed = parseScript(script);
    if (auto* error = std::get_if<ScriptError>(&parsed)) return std::move(*error);
    auto& assignments = std::get<Assignments>(parsed);
    for (; !assignments.empty(); assignments.pop_front()) {
        Assignment& next = assignments.front();
        assign(define(next.target.name).value(), next.target, std::move(next.value));
    }
    return std::nullopt;
}

}  // namespace cobalt
