#pragma once

#include <string>

#include "workbench/lumo/ParameterTable.h"
#include "workbench/lumo/Record.h"

namespace workbench {

/// Where a relative path leads; for a file that is not there.
std::string placeOf(const std::string& path);

/// When the file name of the record is a relative path at which nothing is: where that is and, when
/// `scene` names a scene file, whether the file lies beside it. Else empty. A sentence or two.
std::string adviceOnMissingSource(const lumo::ParameterTable& parameters,
                                  const lumo::Record& record, const std::string& scene);

}  // namespace workbench
