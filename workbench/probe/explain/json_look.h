#pragma once

#include <string_view>

#include "workbench/probe/explain/Ladder.h"

namespace probe {

/// Notes what the settings select from a JSON document, from its format on, and what may mend it.
void lookAtJson(const Settings& settings, std::string_view body, Ladder& ladder);

}  // namespace probe
