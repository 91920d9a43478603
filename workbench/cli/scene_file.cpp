#include "workbench/cli/scene_file.h"

#include <algorithm>
#include <fstream>
#include <nlohmann/json.hpp>

#include "workbench/cli/UsageError.h"
#include "workbench/cli/nearest_name.h"
#include "workbench/cli/parameter_values.h"

namespace workbench {

namespace {

using Json = nlohmann::ordered_json;  // parameters are written in the order of the file

[[noreturn]] void reject(const std::string& where, const std::string& why) {
    throw UsageError(where + ": " + why);
}

std::string place(const std::string& file, const std::string& instance) {
    return file + ", instance \"" + instance + "\"";
}

const Json& member(const Json& object, const char* name, Json::value_t type,
                   const std::string& where) {
    if (!object.is_object() || !object.contains(name) || object[name].type() != type)
        reject(where, std::string("\"") + name + "\" is missing or of the wrong type.");
    return object[name];
}

std::string valueText(const Json& value, const std::string& name, const std::string& where) {
    if (value.is_string()) return value.get<std::string>();
    if (value.is_number() || value.is_boolean()) return value.dump();
    reject(where, "the value of \"" + name + "\" must be a text, a number, true or false.");
}

StoredInstance readInstance(const Json& json, const std::string& file) {
    const std::string position = file + ", an instance";
    StoredInstance instance;
    instance.name = member(json, "name", Json::value_t::string, position).get<std::string>();
    const std::string where = place(file, instance.name);
    const Json& parameters = member(json, "parameters", Json::value_t::object, where);
    for (const auto& [name, value] : parameters.items())
        instance.parameters.emplace_back(name, valueText(value, name, where));
    return instance;
}

Json parseFile(const std::string& file) {
    std::ifstream stream(file, std::ios::binary);
    if (!stream) reject(file, "the scene file cannot be read.");
    try {
        return Json::parse(stream);
    } catch (const Json::exception& error) {
        reject(file, std::string("the scene file is not JSON: ") + error.what());
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
    const Json json = parseFile(file);
    SceneFile scene{file, {}};
    for (const Json& each : member(json, "instances", Json::value_t::array, file)) {
        StoredInstance instance = readInstance(each, file);
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
                     nearestName(name, names) + "\"?");
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
