#pragma once

#include <optional>

#include "workbench/probe/explain/Ladder.h"

namespace workbench {

/// Looks at a source as probe::lookAtSource does, for at most `timeoutSeconds` from the moment that
/// the source is there: a costly XPath over a large document ends no sooner by itself. Nothing when
/// the time was over; the look then goes on, and the process has to end by std::_Exit. Main thread.
std::optional<probe::Ladder> lookInTime(const probe::Settings& settings, double timeoutSeconds,
                                        bool mayWrite);

}  // namespace workbench
