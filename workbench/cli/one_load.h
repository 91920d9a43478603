#pragma once

#include <optional>

#include "workbench/cli/LoadWatch.h"
#include "workbench/cli/Options.h"
#include "workbench/cli/PatienceNotice.h"

namespace workbench {

inline constexpr int32_t loadAction = 0;

/// Makes the instance that the options name: one of a scene, or a new one, which is called
/// "workbench". Returns its name. Throws UsageError.
std::string placeInstance(lumo::Host& host, lumo::Instance& instance, const Options& options);

/// Sets what the options say, and what is found of a bare source by looking at it. Throws
/// UsageError, and probe::LookFailure for a source.
void applySettings(lumo::Host& host, lumo::Instance& instance, const Options& options);

/// Runs frames until the answer of a load was executed; nothing when none came in time.
std::optional<Outcome> waitForAnswer(LoadWatch& watch, PatienceNotice& notice,
                                     double timeoutSeconds);

}  // namespace workbench
