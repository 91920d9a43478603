#pragma once

#include "workbench/lumo/ParameterTable.h"
#include "workbench/lumo/Record.h"
#include "workbench/probe/Settings.h"

namespace workbench {

/// What the record of an instance says of its source, for the probe.
probe::Settings probeSettings(const lumo::ParameterTable& parameters, const lumo::Record& record);

}  // namespace workbench
