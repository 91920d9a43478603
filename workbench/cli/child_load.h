#pragma once

#include "workbench/cli/scene_child.h"
#include "workbench/lumo/ParameterTable.h"
#include "workbench/lumo/Record.h"

namespace workbench {

/// A child process that loads once with these values, without the post-update action, writes no
/// log, and whose standard output is the script. What it is like this process in is for the caller
/// to set.
SceneChild childThatLoads(const lumo::ParameterTable& parameters, const lumo::Record& record);

}  // namespace workbench
