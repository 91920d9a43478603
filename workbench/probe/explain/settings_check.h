#pragma once

#include "workbench/probe/explain/Ladder.h"

namespace probe {

/// Whether the form of field that is written needs a key.
bool needsKey(const Settings& settings);

/// Notes what is wrong with the settings by themselves.
void checkSettings(const Settings& settings, Ladder& ladder);

}  // namespace probe
