#pragma once

#include <string>

namespace workbench {

/// A time in few characters: "40 ms", "3.2 s", "35 s", "4 min", "2 h", "3 d".
std::string durationText(double seconds);

/// The same in whole seconds at least, so that it changes once a second: "0 s", "35 s", "4 min".
std::string calmDurationText(double seconds);

}  // namespace workbench
