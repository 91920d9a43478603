#pragma once

#include "workbench/probe/explore/Outline.h"

namespace probe {

/// What a source turned out to be, and what is in it.
struct Explored {
    std::string words;  // "JSON", "an HTML page titled "Sign in""
    Proposal source;    // how it is read: the query type and, of a database, where it is
    std::optional<std::size_t> bytes;  // of a file or what a server sent
    Outline outline;
};

/// Fetches the source that the settings name and looks into it, whatever query type they name; of
/// the query type SQL it looks into the database of the connection string. Blocks for at most
/// `timeoutSeconds` and the time that the source takes to be read; any thread. Throws LookFailure;
/// of a database what() is sentences of their own.
Explored exploreSource(const Settings& settings, const OutlineWish& wish, double timeoutSeconds);

}  // namespace probe
