#pragma once

#include <vector>

#include "formats/json/JsonDocument.h"
#include "formats/json/json_path.h"

namespace intake {

/// The nodes that a path selects, in the order of their discovery: depth first, as they stand in
/// the document. A path without steps selects the root.
std::vector<JsonDocument::Node> selectNodes(const JsonDocument& document,
                                            const std::vector<PathStep>& path);

}  // namespace intake
