#pragma once

#include "workbench/probe/explore/Outline.h"

namespace probe {

/// What a source turned out to be, and what is in it.
struct Explored {
    std::string words;  // "JSON", "an HTML page titled "Sign in""
    QueryType queryMode = QueryType::Json;
    std::size_t bytes = 0;
    Outline outline;
};

/// Fetches the source that the settings name and looks into it, whatever query type they name.
/// Blocks for at most `timeoutSeconds` and the time that the source takes to be read; any thread.
/// Throws LookFailure.
Explored exploreSource(const Settings& settings, const OutlineWish& wish, double timeoutSeconds);

}  // namespace probe
