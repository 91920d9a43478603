#pragma once

#include <string>

#include "workbench/lumo/ParameterTable.h"
#include "workbench/lumo/Record.h"

namespace workbench {

/// Calls `visit` with each parameter that has a value, and with its host index.
template <class Visit>
void forEachValue(const lumo::ParameterTable& parameters, Visit visit) {
    for (int32_t index = 1; index <= parameters.size(); ++index) {
        if (lumo::hasValue(parameters.at(index))) visit(parameters.at(index), index);
    }
}

void copyValue(const lumo::Parameter& parameter, int32_t index, const lumo::Record& from,
               lumo::Record& to);

void copyValues(const lumo::ParameterTable& parameters, const lumo::Record& from, lumo::Record& to);

bool isSameValue(const lumo::Parameter& parameter, int32_t index, const lumo::Record& a,
                 const lumo::Record& b);

/// The value of a text parameter; empty when the plugin has none of that name.
std::string textParameter(const char* name, const lumo::ParameterTable& parameters,
                          const lumo::Record& record);

/// A scene file with just this instance, of that name.
std::string sceneOf(const std::string& name, const lumo::ParameterTable& parameters,
                    const lumo::Record& record);

}  // namespace workbench
