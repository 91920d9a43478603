#include "workbench/lumo/ParameterTable.h"

#include <utility>

namespace lumo {

void ParameterTable::add(Parameter parameter) {
    parameter.persistent = persistent_;
    parameters_.push_back(std::move(parameter));
}

void ParameterTable::hideLast() {
    if (!parameters_.empty()) parameters_.back().hidden = true;
}

const Parameter& ParameterTable::at(int32_t hostIndex) const {
    return parameters_.at(static_cast<std::size_t>(hostIndex) - 1);
}

std::optional<int32_t> ParameterTable::find(std::string_view name) const {
    for (int32_t index = 1; index <= size(); ++index) {
        if (at(index).name == name && !name.empty()) return index;
    }
    return std::nullopt;
}

}  // namespace lumo
