#pragma once

#include "workbench/cli/ExitStatus.h"
#include "workbench/cli/Options.h"
#include "workbench/cli/StandardStreams.h"
#include "workbench/lumo/Host.h"
#include "workbench/lumo/Plugin.h"

namespace workbench {

/// The commands of the workbench. Each runs on the main thread, writes its result and returns how
/// the process ends. They throw UsageError.
ExitStatus runLoad(lumo::Host& host, const lumo::Plugin& plugin, const Options& options,
                   const StandardStreams& streams);
ExitStatus runParams(const lumo::Host& host, const Options& options,
                     const StandardStreams& streams);
ExitStatus runExplain(lumo::Host& host, const lumo::Plugin& plugin, const Options& options,
                      const StandardStreams& streams);
ExitStatus runExplore(lumo::Host& host, const lumo::Plugin& plugin, const Options& options,
                      const StandardStreams& streams);
ExitStatus runScene(lumo::Host& host, const lumo::Plugin& plugin, const Options& options,
                    const StandardStreams& streams);
ExitStatus runServe(lumo::Host& host, const lumo::Plugin& plugin, const Options& options,
                    const StandardStreams& streams);

}  // namespace workbench
