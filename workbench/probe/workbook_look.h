#pragma once

#include "workbench/probe/Fetched.h"
#include "workbench/probe/Ladder.h"

namespace probe {

/// Notes what the settings select from a workbook, from its format on, and what may mend it.
void lookAtWorkbook(const Settings& settings, const Fetched& source, Ladder& ladder);

}  // namespace probe
