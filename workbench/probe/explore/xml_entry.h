#pragma once

#include <string>

#include "workbench/probe/explore/Outline.h"
#include "workbench/probe/fetch/Fetched.h"

namespace probe {

/// Whether a place is one of several elements of an XML document: "/l/c[2]", "/l/c[2]/n".
bool isXmlEntry(const std::string& place);

/// What is at such a place, and what it holds, each with the settings that select just this one;
/// and those that select the element by a value in it. Throws LookFailure for what is no XML, and
/// for a place that is not there.
Outline xmlEntryOutline(const Fetched& source, const OutlineWish& wish);

}  // namespace probe
