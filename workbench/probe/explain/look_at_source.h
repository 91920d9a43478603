#pragma once

#include "workbench/probe/explain/Ladder.h"

namespace probe {

/// Looks at the source of an instance by itself, as far as the stage of the script, and notes what
/// it finds and what may mend it. Of databases it looks at the settings only. Blocks for at most
/// `timeoutSeconds` and the time that the source takes to be read; any thread.
Ladder lookAtSource(const Settings& settings, double timeoutSeconds);

}  // namespace probe
