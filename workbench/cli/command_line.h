#pragma once

#include <CLI/CLI.hpp>
#include <memory>

#include "workbench/cli/Options.h"

namespace workbench {

/// The command line: its commands and options with what is said of each. What it reads goes into
/// `options`, which must outlive it.
std::unique_ptr<CLI::App> commandLine(Options& options);

}  // namespace workbench
