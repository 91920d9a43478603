#pragma once

#include <string>

#include "workbench/cli/Redaction.h"
#include "workbench/cli/serve/SeriesLog.h"

namespace workbench {

/// The names as JSON, without secrets. Any thread.
std::string seriesJson(const InstanceSeries& known, const Redaction& redact);

/// The numbers of one name as JSON; null in the place of those that are secrets. Any thread.
std::string pointsJson(const InstanceSeries::Series& series, const Redaction& redact);

/// The series that is told by that name, or null.
const InstanceSeries::Series* toldAs(const std::string& told, const InstanceSeries& known,
                                     const Redaction& redact);

}  // namespace workbench
