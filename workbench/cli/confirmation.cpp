#include "workbench/cli/confirmation.h"

#include "workbench/cli/ExitStatus.h"
#include "workbench/cli/UsageError.h"
#include "workbench/cli/child_load.h"
#include "workbench/cli/parameter_values.h"
#include "workbench/cli/record_values.h"
#include "workbench/cli/written_records.h"

namespace workbench {

std::optional<std::size_t> recordsWith(const probe::Proposal& proposal,
                                       const lumo::ParameterTable& parameters,
                                       const lumo::Record& record, const Options& options,
                                       double timeoutSeconds) {
    lumo::Record changed(parameters);
    copyValues(parameters, record, changed);
    try {
        for (const auto& [name, value] : proposal)
            setParameter(parameters, changed, name, value);
    } catch (const UsageError&) {
        return std::nullopt;
    }
    SceneChild child = childThatLoads(parameters, changed);
    child.plugin = options.plugin;
    child.fontEncoding = options.fontEncoding;
    child.timeoutSeconds = child.patienceSeconds = timeoutSeconds;
    const ChildAnswer answer = ask(child);
    if (answer.status != static_cast<int>(ExitStatus::Loaded)) return std::nullopt;
    return writtenRecords(answer.out, parameters, changed);
}

}  // namespace workbench
