#pragma once

#include <cstddef>
#include <string>

#include "workbench/probe/Settings.h"

namespace probe {

/// Where a source is, as the plugin takes its name.
struct Source {
    bool isUrl = false;
    std::string place;             // an address, or the path of a file
    std::size_t mostBytes = 0;     // that are read of it
    std::string mostBytesInWords;  // "100 MB"
};

/// Throws FetchFailure for a name that is an address which the query type does not read.
Source sourceOf(const Settings& settings);

}  // namespace probe
