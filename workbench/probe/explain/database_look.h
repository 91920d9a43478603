#pragma once

#include "workbench/probe/database/Database.h"
#include "workbench/probe/explain/Ladder.h"

namespace probe {

/// Notes what is found of a database and of its query, which is run where it is one that only
/// reads. Ends by the deadline where driver and database do. `mayWrite`: the plugin may run a query
/// that writes; it is not run here.
void lookAtDatabase(const Settings& settings, bool mayWrite, Deadline end, Ladder& ladder);

}  // namespace probe
