#pragma once

#include <string>

#include "tests/tree/SourceTree.h"

namespace intake {

/// What is wrong with platform/README.md's table, given as its text: an interface of platform/*.h
/// that has no row, an implementation that is not derived from the row's interfaces, or a contract
/// test that is not there. Where there can be none, the cell says "none:" and why.
Violations platformTableFaults(const std::string& text, const SourceTree& tree);

}  // namespace intake
