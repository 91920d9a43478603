#pragma once

#include "workbench/probe/explore/Outline.h"
#include "workbench/probe/fetch/Fetched.h"

namespace probe {

/// The tables of a page. A place is the selector of one, and has its columns. Throws LookFailure
/// for a page that is not read, and for a place that is not there.
Outline htmlOutline(const Fetched& source, const OutlineWish& wish);

}  // namespace probe
