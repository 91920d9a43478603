#pragma once

#include <cstddef>
#include <optional>

#include "workbench/cli/Options.h"
#include "workbench/lumo/ParameterTable.h"
#include "workbench/lumo/Record.h"
#include "workbench/probe/Settings.h"

namespace workbench {

/// How many records the plugin loads with a proposal: it loads them, in a process of its own that
/// gets the parameters by its standard input, writes no log and leaves nothing behind. Nothing when
/// the load fails, takes longer than `timeoutSeconds`, or when a value does not fit.
std::optional<std::size_t> recordsWith(const probe::Proposal& proposal,
                                       const lumo::ParameterTable& parameters,
                                       const lumo::Record& record, const Options& options,
                                       double timeoutSeconds);

}  // namespace workbench
