#pragma once

#include "workbench/probe/explain/Ladder.h"

namespace probe {

/// Notes what is wrong with the settings by themselves.
void checkSettings(const Settings& settings, Ladder& ladder);

}  // namespace probe
