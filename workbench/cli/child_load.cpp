#include "workbench/cli/child_load.h"

#include "workbench/cli/parameter_values.h"
#include "workbench/cli/record_values.h"

namespace workbench {

SceneChild childThatLoads(const lumo::ParameterTable& parameters, const lumo::Record& record) {
    lumo::Record silent(parameters);
    copyValues(parameters, record, silent);
    setParameter(parameters, silent, "logLevel", "FATAL");
    setParameter(parameters, silent, "autoLoad", "0");  // it would load a second time
    setParameter(parameters, silent, "postAction", "");
    SceneChild child{"load", {"--out", "script"}, sceneOf("loaded", parameters, silent), "", 1};
    constexpr int32_t sharedMemory = 4;
    const auto mode = parameters.find("mode");
    const auto variable = parameters.find("shmvar");
    // A memory is bound when its name changes.
    if (mode && variable && record.integer(*mode) == sharedMemory)
        child.arguments.insert(child.arguments.end(),
                               {"--set", "shmvar=" + std::string(record.text(*variable))});
    return child;
}

}  // namespace workbench
