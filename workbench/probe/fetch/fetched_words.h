#pragma once

#include <string>

#include "workbench/probe/fetch/Fetched.h"
#include "workbench/probe/recognise.h"

namespace probe {

/// What a source of this kind is called: "an HTML page titled "Anmelden"", whatever its encoding.
std::string wordsFor(Kind kind, const Fetched& source);

}  // namespace probe
