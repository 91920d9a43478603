#pragma once

#include <string_view>

#include "workbench/probe/explain/Ladder.h"
#include "workbench/probe/fetch/Fetched.h"

namespace probe {

/// Notes what the settings select from an XML document, from its format on, and what may mend it.
void lookAtXml(const Settings& settings, const Fetched& source, Ladder& ladder);

/// Whether a source can be read as XML, as some HTML pages can.
bool isXml(const Fetched& source);

}  // namespace probe
