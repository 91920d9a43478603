#pragma once

#include <string>

namespace workbench {

/// What `explain --out json` says of why a load brings nothing: the stage that failed and its
/// cause, "selection: it has no such member". Where none failed, that the source has nothing. Empty
/// when the text is no explanation.
std::string stageOfFailure(const std::string& explanation);

}  // namespace workbench
