#pragma once

#include <optional>
#include <string>

#include "workbench/cli/Redaction.h"
#include "workbench/lumo/Parameter.h"

namespace workbench {

/// The text of a parameter as a page is told it: its secrets are hidden.
std::string shownText(const lumo::Parameter& parameter, const std::string& text,
                      const Redaction& redact);

/// What the user means who has edited a text that was shown so: what is still hidden stays as it
/// was in `text`. Nothing when that cannot be told any more.
std::optional<std::string> meantText(const lumo::Parameter& parameter, const std::string& edited,
                                     const std::string& text, const Redaction& redact);

}  // namespace workbench
