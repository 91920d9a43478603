#pragma once

#include <string>

#include "workbench/cli/Redaction.h"
#include "workbench/cobalt/Value.h"

namespace workbench {

/// What can be drawn of the records of a field, as JSON: the members that they have, those of a
/// structure within a record as "goals.for", and how many of each are numbers. A record that is a
/// plain value has the one column "value".
std::string columnsJson(const cobalt::Value& records, const Redaction& redact);

/// One of these columns as JSON, record by record.
std::string columnJson(const cobalt::Value& records, const std::string& column,
                       const Redaction& redact);

}  // namespace workbench
