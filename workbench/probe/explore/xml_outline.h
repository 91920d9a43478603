#pragma once

#include "workbench/probe/explore/Outline.h"
#include "workbench/probe/fetch/Fetched.h"

namespace probe {

/// What can be selected in an XML document. A place is a path of names, as the outline gives them.
/// Throws LookFailure for what is no XML, and for a place that is not there.
Outline xmlOutline(const Fetched& source, const OutlineWish& wish);

}  // namespace probe
