#pragma once

#include <string>

#include "workbench/lumo/ParameterTable.h"

namespace workbench {

/// Every registered parameter, as a table for people to read.
std::string parameterTable(const lumo::ParameterTable& parameters);

/// Every registered parameter as a JSON array of objects; labels and entries exactly as registered.
std::string parameterJson(const lumo::ParameterTable& parameters);

}  // namespace workbench
