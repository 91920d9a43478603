#include "workbench/cli/scene_file.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <utility>

#include "workbench/cli/UsageError.h"
#include "workbench/cli/json_fault.h"
#include "workbench/cli/missing_file.h"
#include "workbench/cli/parameter_values.h"
#include "workbench/probe/nearest_name.h"
#include "workbench/probe/words.h"

namespace workbench {

namespace {

using Document = intake::JsonDocument;
using Node = Document::Node;
using Type = Document::Type;

[[noreturn]] void reject(const std::string& where, const std::string& why) {
    throw UsageError(where + ": " + why);
}

std::string place(const std::string& file, const std::string& instance) {
    return file + ", instance \"" + instance + "\"";
}

Node member(const Document& json, Node object, const char* name, Type type,
            const std::string& where) {
    const Node found = json.find(object, name);
    if (found == Document::NONE || json.type(found) != type)
        reject(where, std::string("\"") + name + "\" is missing or of the wrong type.");
    return found;
}

std::string valueText(const Document& json, Node value, const std::string& where) {
    if (json.isContainer(value) || json.type(value) == Type::NULL_VALUE)
        reject(where, "the value of \"" + std::string(json.name(value)) +
                          "\" must be a text, a number, true or false.");
    return std::string(json.asString(value));
}

StoredInstance readInstance(const Document& json, Node node, const std::string& file,
                            const IsKnown& isKnown) {
    StoredInstance instance;
    instance.name = json.asString(member(json, node, "name", Type::STRING, file + ", an instance"));
    const std::string where = place(file, instance.name);
    const Node parameters = member(json, node, "parameters", Type::OBJECT, where);
    for (Node each = Document::firstChild(parameters); each != json.behind(parameters);
         each = json.behind(each)) {
        if (isKnown(json.name(each)))
            instance.parameters.emplace_back(json.name(each), valueText(json, each, where));
    }
    return instance;
}

std::string whereItShouldBe(const std::string& file) {
    const bool isMissing =
        !std::filesystem::exists(file) && std::filesystem::path(file).is_relative();
    return isMissing ? " It was looked for as " + placeOf(file) + "." : "";
}

void requireOwnName(const StoredInstance& instance, const SceneFile& scene) {
    const auto bearsTheName = [&](const StoredInstance& other) {
        return other.name == instance.name;
    };
    if (std::any_of(scene.instances.begin(), scene.instances.end(), bearsTheName))
        reject(place(scene.file, instance.name), "another instance already has this name.");
}

}  // namespace

std::string readSceneText(const std::string& file) {
    std::ifstream stream(file, std::ios::binary);
    if (!stream) reject(file, "the scene file cannot be read." + whereItShouldBe(file));
    return {std::istreambuf_iterator<char>(stream), {}};
}

Document parseScene(std::string_view text, const std::string& file) {
    intake::ByteBuffer bytes;
    char* const start = bytes.prepare(text.size() + 1);
    text.copy(start, text.size());
    start[text.size()] = 0;
    bytes.commit(text.size() + 1);
    try {
        return Document(std::move(bytes));
    } catch (const std::invalid_argument& error) {
        reject(file, "the scene file is not JSON: " + jsonFault(error.what(), std::string(text)));
    }
}

SceneFile sceneIn(const Document& json, const std::string& file, const IsKnown& isKnown) {
    const Node instances = member(json, Document::ROOT, "instances", Type::ARRAY, file);
    SceneFile scene{file, {}};
    for (Node each = Document::firstChild(instances); each != json.behind(instances);
         each = json.behind(each)) {
        StoredInstance instance = readInstance(json, each, file, isKnown);
        requireOwnName(instance, scene);
        scene.instances.push_back(std::move(instance));
    }
    return scene;
}

SceneFile readSceneFile(const std::string& file) {
    return sceneIn(parseScene(readSceneText(file), file), file,
                   [](std::string_view) { return true; });
}

const StoredInstance& SceneFile::find(const std::string& name) const {
    if (instances.empty()) reject(file, "the scene has no instances.");
    if (name.empty() && instances.size() == 1) return instances.front();
    std::vector<std::string> names;
    for (const StoredInstance& instance : instances) {
        if (instance.name == name) return instance;
        names.push_back(instance.name);
    }
    if (name.empty())
        reject(file, "the scene has several instances: " + probe::listOf(names) +
                         ". Choose one with --instance.");
    reject(file, "there is no instance \"" + name + "\". Did you mean \"" +
                     probe::nearestName(name, names) + "\"?");
}

void SceneFile::restore(const StoredInstance& instance, const lumo::ParameterTable& parameters,
                        lumo::Record& record) const {
    try {
        for (const auto& [name, value] : instance.parameters)
            setParameter(parameters, record, name, value);
    } catch (const UsageError& error) {
        reject(place(file, instance.name), error.what());
    }
}

}  // namespace workbench
