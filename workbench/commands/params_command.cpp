#include "workbench/cli/parameter_list.h"
#include "workbench/commands/commands.h"

namespace workbench {

ExitStatus runParams(const lumo::Host& host, const Options& options,
                     const StandardStreams& streams) {
    streams.writeResult(options.output == Output::Json ? parameterJson(host.parameters)
                                                       : parameterTable(host.parameters));
    return ExitStatus::Loaded;
}

}  // namespace workbench
