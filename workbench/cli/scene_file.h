#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "formats/json/JsonDocument.h"
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

/// The same in steps. The text of a scene file:
std::string readSceneText(const std::string& file);

/// It as JSON:
intake::JsonDocument parseScene(std::string_view text, const std::string& file);

/// What it holds. Parameters that are not known are passed over; their values may be anything.
using IsKnown = std::function<bool(std::string_view parameter)>;
SceneFile sceneIn(const intake::JsonDocument& json, const std::string& file,
                  const IsKnown& isKnown);

}  // namespace workbench
