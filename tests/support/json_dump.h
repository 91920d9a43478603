#pragma once

#include <string>

#include "formats/json/JsonDocument.h"

namespace intake {

/// All nodes of a document, one a line, by their numbers. Of a container also how many children it
/// has, and the number of the node behind it.
std::string dumpJson(const JsonDocument& document);

}  // namespace intake
