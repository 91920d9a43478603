#pragma once

#include <cstddef>
#include <optional>
#include <string>

namespace workbench {

/// The NAME=VALUE that `setting`, NAME=VARIABLE, stands for: the value is that of the environment
/// variable. Throws UsageError when it is not set.
std::string settingFromEnvironment(const std::string& setting);

/// The width that the variable COLUMNS asks for; none when it is not set, or no number above 0.
std::optional<std::size_t> columnsFromEnvironment();

/// Whether the language settings say that a terminal shows UTF-8.
bool terminalHasUnicode();

}  // namespace workbench
