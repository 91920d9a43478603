#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "pipeline/RequestRecord.h"

namespace intake {

/// A request of the golden directory, which stands beside its source and the script that it has to
/// write: `name.request` holds a command text, `name.script` the script and nothing else.
struct GoldenCase {
    std::string name;
    RequestRecord request;
    std::string source;  // what the file that the request names holds
    std::filesystem::path scriptFile;
};

/// All of them, by name.
std::vector<GoldenCase> goldenCases(const std::filesystem::path& directory);

/// All bytes of a file; none when there is no such file.
std::string contentOf(const std::filesystem::path& file);

}  // namespace intake
