#pragma once

#include "workbench/probe/explain/Ladder.h"
#include "workbench/probe/fetch/Fetched.h"

namespace probe {

/// Notes what the settings select from a workbook, from its format on, and what may mend it.
void lookAtWorkbook(const Settings& settings, const Fetched& source, Ladder& ladder);

}  // namespace probe
