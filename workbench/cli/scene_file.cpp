#include "workbench/cli/scene_file.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <utility>

#include "formats/json/JsonDocument.h"
#include "workbench/cli/UsageError.h"
#include "workbench/cli/json_fault.h"
#include "workbench/cli/missing_file.h"
#include "workbench/cli/parameter_values.h"
#include "workbench/probe/nearest_name.h"

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

StoredInstance readInstance(const Document& json, Node node, const std::string& file) {
    StoredInstance instance;
    instance.name = json.asString(member(json, node, "name", Type::STRING, file + ", an instance"));
    const std::string where = place(file, instance.name);
    const Node parameters = member(json, node, "parameters", Type::OBJECT, where);
    for (Node each = Document::firstChild(parameters); each != json.behind(parameters);
         each = json.behind(each))
        instance.parameters.emplace_back(json.name(each), valueText(json, each, where));
    return instance;
}

std::string whereItShouldBe(const std::string& file) {
    const bool isMissing =
        !std::filesystem::exists(file) && std::filesystem::path(file).is_relative();
    return isMissing ? " It was looked for as " + placeOf(file) + "." : "";
}

// The bytes of a file, and the zero byte that ends a text.
intake::ByteBuffer readFile(const std::string& file) {
    std::ifstream stream(file, std::ios::binary);
    if (!stream) reject(file, "the scene file cannot be read." + whereItShouldBe(file));
    intake::ByteBuffer text;
    do {
        constexpr std::size_t BLOCK = 1 << 16;
        stream.read(text.prepare(BLOCK), BLOCK);
        text.commit(static_cast<std::size_t>(stream.gcount()));
    } while (stream);
    *text.prepare(1) = 0;
    text.commit(1);
    return text;
}

Document parseFile(const std::string& file) {
    intake::ByteBuffer text = readFile(file);
    const std::string source(text.data(), text.size() - 1);  // the document decodes its own
    try {
        return Document(std::move(text));
    } catch (const std::invalid_argument& error) {
        reject(file, "the scene file is not JSON: " + jsonFault(error.what(), source));
    }
}

void requireOwnName(const StoredInstance& instance, const SceneFile& scene) {
    const auto bearsTheName = [&](const StoredInstance& other) {
        return other.name == instance.name;
    };
    if (std::any_of(scene.instances.begin(), scene.instances.end(), bearsTheName))
        reject(place(scene.file, instance.name), "another instance already has this name.");
}

}  // namespace

SceneFile readSceneFile(const std::string& file) {
    const Document json = parseFile(file);
    const Node instances = member(json, Document::ROOT, "instances", Type::ARRAY, file);
    SceneFile scene{file, {}};
    for (Node each = Document::firstChild(instances); each != json.behind(instances);
         each = json.behind(each)) {
        StoredInstance instance = readInstance(json, each, file);
        requireOwnName(instance, scene);
        scene.instances.push_back(std::move(instance));
    }
    return scene;
}

const StoredInstance& SceneFile::find(const std::string& name) const {
    if (instances.empty()) reject(file, "the scene has no instances.");
    if (name.empty() && instances.size() == 1) return instances.front();
    std::vector<std::string> names;
    for (const StoredInstance& instance : instances) {
        if (instance.name == name) return instance;
        names.push_back(instance.name);
    }
    if (name.empty()) reject(file, "the scene has several instances; choose one with --instance.");
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
