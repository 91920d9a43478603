#pragma once

// What is written of the command line beside its own help. Each text ends with a line feed.

#include <CLI/CLI.hpp>
#include <string>
#include <vector>

#include "workbench/lumo/ParameterTable.h"

namespace workbench {

/// A command or option that users see.
struct ManualOption {
    std::string name;                  // "--set"
    std::string value;                 // "NAME=VALUE"; empty for a switch
    std::string help;                  // one sentence
    std::vector<std::string> choices;  // empty where any value goes
};

/// The options of the program or of one of its commands, those that are arguments aside.
std::vector<ManualOption> optionsOf(const CLI::App& command);

/// For man, in the macros of groff_man(7).
std::string manPage(const CLI::App& app, const lumo::ParameterTable& parameters);

/// For completion in bash and zsh: a function of either shell that sets `words`, and `files` where
/// files go too, by the command, the word before and the present one. It knows commands, options,
/// what they take, and behind --set the parameters and their entries.
std::string completionWords(const CLI::App& app, const lumo::ParameterTable& parameters);

}  // namespace workbench
