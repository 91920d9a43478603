#pragma once

#include <string>

#include "workbench/probe/explore/Outline.h"

namespace probe {

/// What can be selected in a JSON document. A place is a path of names, as the outline gives them.
/// Throws LookFailure for what is no JSON, and for a place that is not there.
Outline jsonOutline(const std::string& body, const OutlineWish& wish);

}  // namespace probe
