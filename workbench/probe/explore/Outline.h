#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "workbench/probe/Settings.h"

namespace probe {

/// Something in a source that can be selected, or that others stand in.
struct OutlineEntry {
    std::size_t depth = 0;  // 0 for what stands directly at the place that was asked for
    std::string name;
    std::string kind;                    // "objects", "texts", "table"
    std::optional<std::size_t> records;  // that are loaded by its settings; nothing: not counted
    std::string value;                   // of the first one, in one line; empty where there is none
    std::string place;                   // to look below it; empty when nothing is there
    Proposal settings;                   // that select it; empty when nothing does
};

/// What can be selected in a source, or below one place of it.
struct Outline {
    std::vector<OutlineEntry> entries;
    std::size_t leftOut = 0;  // further ones, for want of room
    std::size_t notKept = 0;  // names and what is below them that were not even looked at
};

/// What is wanted of an outline.
struct OutlineWish {
    std::string place;      // empty for the whole source
    std::string find;       // only what has this text in its name or in a value; empty for all
    std::size_t most = 40;  // so many entries
};

}  // namespace probe
