#include "workbench/cli/commands.h"
#include "workbench/cli/parameter_list.h"

namespace workbench {

ExitStatus runParams(const lumo::Host& host, const Options& options,
                     const StandardStreams& streams) {
    streams.writeResult(options.output == Output::Json ? parameterJson(host.parameters)
                                                       : parameterTable(host.parameters));
    return ExitStatus::Loaded;
}

}  // namespace workbench
