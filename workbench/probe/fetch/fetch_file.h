#pragma once

#include <fstream>
#include <string>

#include "workbench/probe/fetch/Fetched.h"
#include "workbench/probe/fetch/fetch_source.h"

namespace probe {

/// A file to be read from its start. Throws FetchFailure.
std::ifstream openedFile(const std::string& file);

/// A file, whole. Throws FetchFailure.
Fetched fetchFile(const Source& source);

/// Of a source that has more than is read of it.
FetchFailure tooLarge(const Source& source);

}  // namespace probe
