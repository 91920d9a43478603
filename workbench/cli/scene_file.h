#pragma once

#include <string>
#include <utility>
#include <vector>

#include "workbench/lumo/ParameterTable.h"
#include "workbench/lumo/Record.h"

namespace workbench {

/// An instance as a scene stores it: its parameters in order, values as a user writes them.
struct StoredInstance {
    std::string name;
    std::vector<std::pair<std::string, std::string>> parameters;
};

/// A scene file: {"instances": [{"name": "league", "parameters": {"queryMode": "JSON"}}]}.
struct SceneFile {
    std::string file;
    std::vector<StoredInstance> instances;

    /// The instance of that name, or with an empty name the only one. Throws UsageError.
    const StoredInstance& find(const std::string& name) const;

    /// Writes the stored values into a record of defaults. Throws UsageError, naming the file and
    /// the instance, for the first that does not fit.
    void restore(const StoredInstance& instance, const lumo::ParameterTable& parameters,
                 lumo::Record& record) const;
};

/// Reads a scene. Throws UsageError, naming the file, when it cannot be read or is no scene, or
/// when two instances bear one name.
SceneFile readSceneFile(const std::string& file);

}  // namespace workbench
