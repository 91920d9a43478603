#pragma once

#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "workbench/cli/JsonWriter.h"
#include "workbench/cli/Redaction.h"
#include "workbench/cli/scene_file.h"

namespace workbench {

/// An instance as a page shows it.
struct ShownInstance {
    std::string name;
    std::string stored;  // the name under which the scene file has it; empty when it has not
    std::string like;    // the name of the stored one that it goes on, or was copied from
    std::shared_ptr<const lumo::Record> values;
};

/// What a save would change in a scene file.
struct SceneChange {
    enum class Kind { New, Changed, Gone, Renamed };

    struct Value {
        std::string parameter;
        std::string before;  // without secrets, as is what follows
        std::string after;
    };

    std::string instance;
    Kind kind = Kind::Changed;
    std::string was;  // its name before
    std::vector<Value> values;
};

/// A scene file as it stands, with all that the workbench does not know of it.
class SceneText {
public:
    /// Throws UsageError, naming the file, when the text is no scene.
    SceneText(const std::string& file, const std::string& text,
              const lumo::ParameterTable& parameters);

    /// What the plugin knows of it.
    const SceneFile& known() const { return known_; }

    /// Parameters that the plugin does not have: a sentence for each.
    std::vector<std::string> notes() const;

    /// What only the file knows, as JSON by the words for it: unknown members and parameters.
    std::map<std::string, std::string> strangers() const;

    std::vector<SceneChange> changesBy(const std::vector<ShownInstance>& shown) const;

    /// The file with these instances in the place of its own. Unknown members and parameters stay,
    /// and what has not changed stays as it is written.
    std::string with(const std::vector<ShownInstance>& shown, bool withoutSecrets) const;

private:
    using Node = intake::JsonDocument::Node;

    lumo::Record valuesOf(const StoredInstance& stored) const;
    Redaction secretsOf(const lumo::Record& values) const;
    std::vector<int32_t> differences(const lumo::Record& before, const lumo::Record& after) const;
    const StoredInstance* find(const std::string& name) const;
    Node nodeOf(const std::string& name) const;
    void addStrangers(Node node, const std::string& owner, const std::set<std::string_view>& known,
                      std::map<std::string, std::string>& found) const;
    std::optional<SceneChange> changeBy(const ShownInstance& shown) const;
    void writeInstance(const ShownInstance& shown, bool withoutSecrets, JsonWriter& out) const;
    struct Writing;
    void writeParameters(const ShownInstance& shown, Node stored, bool withoutSecrets,
                         JsonWriter& out) const;
    void writeStored(Node stored, Writing& writing) const;
    void writeFurther(Writing& writing) const;
    void writeValue(int32_t index, Node stored, Writing& writing) const;
    std::map<int32_t, Node> nodesInForce(Node parameters) const;
    void copy(Node node, JsonWriter& out, const Redaction* secrets = nullptr) const;

    const lumo::ParameterTable& parameters_;
    const intake::JsonDocument json_;
    const SceneFile known_;
};

/// A scene file without instances.
extern const char* const emptyScene;

}  // namespace workbench
