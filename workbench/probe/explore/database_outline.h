#pragma once

#include "workbench/probe/database/Database.h"
#include "workbench/probe/explore/Outline.h"

namespace probe {

/// The tables and columns of a database, by its catalogue alone: no row is read but for the preview
/// of a whole outline, and rows are counted only where that is wished for. Throws DatabaseFailure,
/// and LookFailure for a place that is not there.
Outline databaseOutline(Database& database, const OutlineWish& wish);

}  // namespace probe
