#include "workbench/cli/confirmation.h"

#include "workbench/cli/ExitStatus.h"
#include "workbench/cli/UsageError.h"
#include "workbench/cli/child_process.h"
#include "workbench/cli/parameter_values.h"
#include "workbench/cli/process.h"
#include "workbench/cli/record_values.h"
#include "workbench/cli/written_records.h"

namespace workbench {

namespace {

std::vector<std::string> commandFor(const Options& options, const lumo::ParameterTable& parameters,
                                    const lumo::Record& record, double timeoutSeconds) {
    std::vector<std::string> command{executablePath().string(),
                                     "load",
                                     "--scene",
                                     "/dev/stdin",
                                     "--out",
                                     "script",
                                     "--timeout",
                                     std::to_string(timeoutSeconds),
                                     "--font-encoding",
                                     std::to_string(options.fontEncoding)};
    if (!options.plugin.empty()) command.insert(command.end(), {"--plugin", options.plugin});
    constexpr int32_t sharedMemory = 4;
    const auto mode = parameters.find("mode");
    const auto variable = parameters.find("shmvar");
    // A memory is bound when its name changes.
    if (mode && variable && record.integer(*mode) == sharedMemory)
        command.insert(command.end(), {"--set", "shmvar=" + std::string(record.text(*variable))});
    return command;
}

}  // namespace

std::optional<std::size_t> recordsWith(const probe::Proposal& proposal,
                                       const lumo::ParameterTable& parameters,
                                       const lumo::Record& record, const Options& options,
                                       double timeoutSeconds) {
    lumo::Record changed(parameters);
    forEachValue(parameters, [&](const lumo::Parameter& parameter, int32_t index) {
        copyValue(parameter, index, record, changed);
    });
    try {
        for (const auto& [name, value] : proposal)
            setParameter(parameters, changed, name, value);
        setParameter(parameters, changed, "logLevel", "FATAL");
    } catch (const UsageError&) {
        return std::nullopt;
    }
    const ChildAnswer answer = askChild(commandFor(options, parameters, changed, timeoutSeconds),
                                        sceneOf("confirmed", parameters, changed), timeoutSeconds);
    if (answer.status != static_cast<int>(ExitStatus::Loaded)) return std::nullopt;
    return writtenRecords(answer.out, parameters, changed);
}

}  // namespace workbench
