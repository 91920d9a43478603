#pragma once

#include "workbench/probe/explain/Ladder.h"

namespace probe {

/// Looks at the source of an instance by itself, as far as the stage of the script, and notes what
/// it finds and what may mend it. A query is run only where it reads; `mayWrite`: the plugin may
/// run others. Blocks for at most
/// `timeoutSeconds` until the source is there, and then as long as it takes to look through it;
/// of what may mend it, it leaves out what there is no time for. Any thread.
Ladder lookAtSource(const Settings& settings, double timeoutSeconds, bool mayWrite);

}  // namespace probe
