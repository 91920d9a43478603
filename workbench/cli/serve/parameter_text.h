#pragma once

#include <string>

#include "workbench/cli/JsonWriter.h"
#include "workbench/lumo/Parameter.h"
#include "workbench/lumo/Record.h"

namespace workbench {

/// A value as a user writes it: the text of a choice, true or false of a switch.
std::string parameterText(const lumo::Parameter& parameter, int32_t index,
                          const lumo::Record& record);

/// A value as a scene file stores it.
void writeParameter(const lumo::Parameter& parameter, int32_t index, const lumo::Record& record,
                    JsonWriter& out);

/// As people write it: 0.2 rather than the nearest value of twice the precision.
double shortest(float number);

}  // namespace workbench
