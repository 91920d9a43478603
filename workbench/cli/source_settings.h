#pragma once

#include <string>
#include <vector>

#include "workbench/lumo/ParameterTable.h"
#include "workbench/lumo/Record.h"

namespace workbench {

/// What a source turned out to be, and what has to be set to load it.
struct SourceSettings {
    std::string words;                  // "an HTML page titled "Sign in""
    std::vector<std::string> settings;  // NAME=VALUE
};

/// Looks at a file or at a URL, with the user and the headers that the record names. Throws
/// probe::LookFailure when that fails, or when the source is nothing that the plugin reads; and
/// UsageError when the record lacks something without which it cannot be loaded.
SourceSettings settingsForSource(const std::string& source, const lumo::ParameterTable& parameters,
                                 const lumo::Record& record);

/// NAME=VALUE as it is given on a command line, with quotes where a shell needs them, and without
/// what commands a terminal.
std::string asArgument(const std::string& setting);

/// What is told of it: what it is, and how to say so without looking.
std::string sentenceAbout(const std::string& source, const SourceSettings& found);

}  // namespace workbench
