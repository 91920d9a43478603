#pragma once

#include "workbench/probe/explore/Outline.h"
#include "workbench/probe/fetch/Fetched.h"

namespace probe {

/// The sheets of a workbook, with their columns. A place is the name of a sheet. Throws LookFailure
/// for a workbook that is not read, and for a place that is not there.
Outline workbookOutline(const Fetched& source, const OutlineWish& wish);

}  // namespace probe
