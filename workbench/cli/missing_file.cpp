#include "workbench/cli/missing_file.h"

#include <filesystem>

namespace workbench {

namespace {

bool isThere(const std::filesystem::path& path) {
    std::error_code error;
    return std::filesystem::exists(path, error) || error;  // what cannot be known is no advice
}

bool mayBeRelative(const std::string& filename) {
    return !filename.empty() && filename.find("://") == std::string::npos &&
           std::filesystem::path(filename).is_relative();
}

// The file that is loaded, or an empty text: an SQL query names its database in the connection
// string.
std::string fileNameOf(const lumo::ParameterTable& parameters, const lumo::Record& record) {
    constexpr int32_t sql = 1;
    const auto queryMode = parameters.find("queryMode");
    const auto filename = parameters.find("filename");
    if (!queryMode || !filename || record.integer(*queryMode) == sql) return "";
    return std::string(record.text(*filename));
}

}  // namespace

std::string placeOf(const std::string& path) {
    std::error_code error;
    return (std::filesystem::current_path(error) / path).lexically_normal().string();
}

std::string adviceOnMissingSource(const lumo::ParameterTable& parameters,
                                  const lumo::Record& record, const std::string& scene) {
    const std::string filename = fileNameOf(parameters, record);
    if (!mayBeRelative(filename) || isThere(filename)) return "";
    std::string advice = filename + " was looked for as " + placeOf(filename) + ".";
    if (scene.empty()) return advice;
    std::error_code error;
    const auto beside = std::filesystem::path(scene).parent_path() / filename;
    if (std::filesystem::exists(beside, error))
        advice += " The folder of the scene has it: " + beside.lexically_normal().string() + ".";
    return advice;
}

}  // namespace workbench
