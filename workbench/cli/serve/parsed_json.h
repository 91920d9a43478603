#pragma once

#include <optional>
#include <string_view>

#include "formats/json/JsonDocument.h"

namespace workbench {

/// A text as JSON; nothing when it is none.
std::optional<intake::JsonDocument> parsedJson(std::string_view text);

/// The text of a member of an object: of a string or a number, true or false. Empty where there is
/// none.
std::string_view memberText(const intake::JsonDocument& json, intake::JsonDocument::Node object,
                            std::string_view name);

}  // namespace workbench
