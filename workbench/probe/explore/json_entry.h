#pragma once

#include <string>

#include "workbench/probe/explore/Outline.h"

namespace probe {

/// Whether a place is within one entry of an array of a JSON document: "items[2]",
/// "items[2]/stock". The third one of a document that is an array itself is "*[2]".
bool isJsonEntry(const std::string& place);

/// What is at such a place, and what it holds, each with the settings that select just this one;
/// and those that select the entry by a value in it. Throws LookFailure for what is no JSON, and
/// for a place that is not there.
Outline jsonEntryOutline(const std::string& body, const OutlineWish& wish);

}  // namespace probe
