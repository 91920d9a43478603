#pragma once

#include <string>

namespace workbench {

/// The NAME=VALUE that `setting`, NAME=VARIABLE, stands for: the value is that of the environment
/// variable. Throws UsageError when it is not set.
std::string settingFromEnvironment(const std::string& setting);

}  // namespace workbench
