#pragma once

#include "tests/tree/SourceTree.h"

namespace intake {

/// Conditional compilation on the operating system where it does not belong.
Violations systemConditions(const SourceTree& tree);

/// Functions whose answer depends on the locale of the host's process.
Violations localeFunctions(const SourceTree& tree);

/// Headers that could be included twice.
Violations unguardedHeaders(const SourceTree& tree);

}  // namespace intake
