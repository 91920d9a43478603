#pragma once

#include "workbench/probe/database/Database.h"
#include "workbench/probe/explore/Outline.h"

namespace probe {

/// The tables and columns of a database, by its catalogue alone: no row is read, so that their
/// number is not known. Throws DatabaseFailure, and LookFailure for a place that is not there.
Outline databaseOutline(Database& database, const OutlineWish& wish);

}  // namespace probe
