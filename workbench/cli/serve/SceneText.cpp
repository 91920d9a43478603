#include "workbench/cli/serve/SceneText.h"

#include <algorithm>
#include <map>
#include <set>
#include <utility>

#include "workbench/cli/JsonWriter.h"
#include "workbench/cli/UsageError.h"
#include "workbench/cli/parameter_values.h"
#include "workbench/cli/probe_settings.h"
#include "workbench/cli/record_values.h"
#include "workbench/cli/serve/parameter_text.h"
#include "workbench/cli/serve/secret_texts.h"

namespace workbench {

namespace {

using intake::JsonDocument;
using Kind = SceneChange::Kind;

constexpr auto none = JsonDocument::NONE;

/// Whether a scene stores it of its own accord.
bool isStored(const lumo::Parameter& parameter) {
    return parameter.persistent && !parameter.hidden;
}

std::string shownValue(const lumo::Parameter& parameter, int32_t index, const lumo::Record& record,
                       const Redaction& secrets) {
    return shownText(parameter, parameterText(parameter, index, record), secrets);
}

void writeWithoutSecrets(const lumo::Parameter& parameter, int32_t index,
                         const lumo::Record& values, const Redaction& secrets, JsonWriter& out) {
    out.text(secrets.without(std::string(values.text(index)), parameter.name));
}

bool holdsSecret(const lumo::Parameter& parameter, int32_t index, const lumo::Record& values,
                 const Redaction& secrets) {
    if (!lumo::isText(parameter)) return false;
    const std::string text(values.text(index));
    return shownText(parameter, text, secrets) != text;
}

/// What is deeper is no scene, and would be gone through by calls within calls.
void requireShallow(const JsonDocument& json, const std::string& file) {
    constexpr std::size_t deepest = 100;
    std::vector<JsonDocument::Node> ends;
    for (JsonDocument::Node each = JsonDocument::ROOT; each != json.behind(JsonDocument::ROOT);
         ++each) {
        while (!ends.empty() && ends.back() == each)
            ends.pop_back();
        if (json.isContainer(each)) ends.push_back(json.behind(each));
        if (ends.size() > deepest)
            throw UsageError(file + ": the scene file is nested more than 100 deep.");
    }
}

}  // namespace

const char* const emptyScene = "{\"instances\": []}\n";

SceneText::SceneText(const std::string& file, const std::string& text,
                     const lumo::ParameterTable& parameters)
    : parameters_(parameters),
      json_(parseScene(text, file)),
      known_(sceneIn(json_, file,
                     [&](std::string_view name) { return parameters.find(name).has_value(); })) {
    requireShallow(json_, file);
}

std::vector<std::string> SceneText::notes() const {
    std::vector<std::string> notes;
    for (const StoredInstance& instance : known_.instances) {
        const Node parameters = json_.find(nodeOf(instance.name), "parameters");
        for (Node each = JsonDocument::firstChild(parameters); each != json_.behind(parameters);
             each = json_.behind(each)) {
            if (!parameters_.find(json_.name(each)))
                notes.push_back(instance.name + ": there is no parameter \"" +
                                std::string(json_.name(each)) + "\"; the scene keeps it.");
        }
    }
    return notes;
}

/// Those members of a node that are not known.
void SceneText::addStrangers(Node node, const std::string& owner,
                             const std::set<std::string_view>& known,
                             std::map<std::string, std::string>& found) const {
    for (Node each = JsonDocument::firstChild(node); each != json_.behind(node);
         each = json_.behind(each)) {
        if (known.contains(json_.name(each))) continue;
        JsonWriter out(JsonWriter::Layout::OneLine);
        copy(each, out);
        found['"' + std::string(json_.name(each)) + '"' + owner] = out.take();
    }
}

std::map<std::string, std::string> SceneText::strangers() const {
    std::map<std::string, std::string> found;
    std::set<std::string_view> parameters;
    for (int32_t i = 1; i <= parameters_.size(); ++i)
        parameters.insert(parameters_.at(i).name);
    addStrangers(JsonDocument::ROOT, "", {"instances"}, found);
    for (const StoredInstance& instance : known_.instances) {
        const std::string owner = " of the instance \"" + instance.name + '"';
        const Node node = nodeOf(instance.name);
        addStrangers(node, owner, {"name", "parameters"}, found);
        const Node values = json_.find(node, "parameters");
        if (values != none) addStrangers(values, " in the parameters" + owner, parameters, found);
    }
    return found;
}

const StoredInstance* SceneText::find(const std::string& name) const {
    const auto found = std::find_if(known_.instances.begin(), known_.instances.end(),
                                    [&](const auto& each) { return each.name == name; });
    return found == known_.instances.end() ? nullptr : &*found;
}

SceneText::Node SceneText::nodeOf(const std::string& name) const {
    const Node instances = json_.find(JsonDocument::ROOT, "instances");
    for (Node each = JsonDocument::firstChild(instances); each != json_.behind(instances);
         each = json_.behind(each)) {
        if (json_.asString(json_.find(each, "name")) == name) return each;
    }
    return none;
}

/// A value that does not fit counts as the default.
lumo::Record SceneText::valuesOf(const StoredInstance& stored) const {
    lumo::Record record(parameters_);
    for (const auto& [name, value] : stored.parameters) {
        try {
            setParameter(parameters_, record, name, value);
        } catch (const UsageError&) {
            continue;
        }
    }
    return record;
}

Redaction SceneText::secretsOf(const lumo::Record& values) const {
    return Redaction(probeSettings(parameters_, values));
}

std::vector<int32_t> SceneText::differences(const lumo::Record& before,
                                            const lumo::Record& after) const {
    std::vector<int32_t> found;
    forEachValue(parameters_, [&](const lumo::Parameter& parameter, int32_t index) {
        if (isStored(parameter) && !isSameValue(parameter, index, before, after))
            found.push_back(index);
    });
    return found;
}

std::optional<SceneChange> SceneText::changeBy(const ShownInstance& shown) const {
    const StoredInstance* const stored = find(shown.stored);
    const lumo::Record before = stored == nullptr ? lumo::Record(parameters_) : valuesOf(*stored);
    const std::vector<int32_t> changed = differences(before, *shown.values);
    SceneChange change{shown.name, stored == nullptr ? Kind::New : Kind::Changed, "", {}};
    if (stored != nullptr && stored->name != shown.name) {
        change.kind = Kind::Renamed;
        change.was = stored->name;
    }
    if (change.kind == Kind::Changed && changed.empty()) return std::nullopt;
    const Redaction secretsBefore = secretsOf(before);
    const Redaction secrets = secretsOf(*shown.values);
    for (const int32_t index : changed) {
        const lumo::Parameter& parameter = parameters_.at(index);
        change.values.push_back(
            {parameter.name,
             stored == nullptr ? "" : shownValue(parameter, index, before, secretsBefore),
             shownValue(parameter, index, *shown.values, secrets)});
    }
    return change;
}

std::vector<SceneChange> SceneText::changesBy(const std::vector<ShownInstance>& shown) const {
    std::vector<SceneChange> changes;
    std::set<std::string> kept;
    for (const ShownInstance& each : shown) {
        auto change = changeBy(each);
        if (change) changes.push_back(std::move(*change));
        kept.insert(each.stored);
    }
    for (const StoredInstance& stored : known_.instances) {
        if (!kept.contains(stored.name)) changes.push_back({stored.name, Kind::Gone, "", {}});
    }
    return changes;
}

std::string SceneText::with(const std::vector<ShownInstance>& shown, bool withoutSecrets) const {
    JsonWriter out;
    out.open('{');
    for (Node each = JsonDocument::firstChild(JsonDocument::ROOT);
         each != json_.behind(JsonDocument::ROOT); each = json_.behind(each)) {
        out.name(json_.name(each));
        if (json_.name(each) != "instances") {
            copy(each, out);
            continue;
        }
        out.open('[');
        for (const ShownInstance& instance : shown)
            writeInstance(instance, withoutSecrets, out);
        out.close(']');
    }
    out.close('}');
    return out.take();
}

void SceneText::writeInstance(const ShownInstance& shown, bool withoutSecrets,
                              JsonWriter& out) const {
    const Node stored = nodeOf(shown.like);
    const Redaction secrets = secretsOf(*shown.values);
    out.open('{');
    if (stored == none) {
        out.member("name", shown.name);
        out.name("parameters");
        writeParameters(shown, none, withoutSecrets, out);
    } else {
        for (Node each = JsonDocument::firstChild(stored); each != json_.behind(stored);
             each = json_.behind(each)) {
            out.name(json_.name(each));
            if (json_.name(each) == "name") {
                out.text(shown.name);
            } else if (json_.name(each) == "parameters") {
                writeParameters(shown, each, withoutSecrets, out);
            } else {
                copy(each, out, withoutSecrets ? &secrets : nullptr);
            }
        }
    }
    out.close('}');
}

/// Where a scene names a parameter twice, the last one counts.
std::map<int32_t, SceneText::Node> SceneText::nodesInForce(Node parameters) const {
    std::map<int32_t, Node> nodes;
    if (parameters == none) return nodes;
    for (Node each = JsonDocument::firstChild(parameters); each != json_.behind(parameters);
         each = json_.behind(each)) {
        if (const auto index = parameters_.find(json_.name(each))) nodes[*index] = each;
    }
    return nodes;
}

/// The parameters of an instance on their way to a file.
struct SceneText::Writing {
    const lumo::Record& values;
    const lumo::Record before;  // in the file
    const Redaction secrets;
    const bool isWithoutSecrets;
    JsonWriter& out;
    std::set<int32_t> written;
};

void SceneText::writeParameters(const ShownInstance& shown, Node stored, bool withoutSecrets,
                                JsonWriter& out) const {
    const StoredInstance* const known = stored == none ? nullptr : find(shown.like);
    Writing writing{*shown.values,
                    known == nullptr ? lumo::Record(parameters_) : valuesOf(*known),
                    secretsOf(*shown.values),
                    withoutSecrets,
                    out,
                    {}};
    out.open('{');
    if (stored != none) writeStored(stored, writing);
    writeFurther(writing);
    out.close('}');
}

/// Those that the file has, in its order.
void SceneText::writeStored(Node stored, Writing& writing) const {
    const std::map<int32_t, Node> inForce = nodesInForce(stored);
    for (Node each = JsonDocument::firstChild(stored); each != json_.behind(stored);
         each = json_.behind(each)) {
        if (const auto index = parameters_.find(json_.name(each))) {
            writeValue(*index, inForce.at(*index), writing);
            continue;
        }
        writing.out.name(json_.name(each));
        copy(each, writing.out, writing.isWithoutSecrets ? &writing.secrets : nullptr);
    }
}

/// Of the others those that are not at their default.
void SceneText::writeFurther(Writing& writing) const {
    const lumo::Record defaults(parameters_);
    forEachValue(parameters_, [&](const lumo::Parameter& parameter, int32_t index) {
        if (isStored(parameter) && !isSameValue(parameter, index, defaults, writing.values))
            writeValue(index, none, writing);
    });
}

/// Once each; what has not changed as the file has it.
void SceneText::writeValue(int32_t index, Node stored, Writing& writing) const {
    if (!writing.written.insert(index).second) return;
    const lumo::Parameter& parameter = parameters_.at(index);
    const auto& [values, before, secrets, isWithoutSecrets, out, written] = writing;
    out.name(parameter.name);
    if (isWithoutSecrets && holdsSecret(parameter, index, values, secrets)) {
        writeWithoutSecrets(parameter, index, values, secrets, out);
    } else if (stored != none && isSameValue(parameter, index, before, values)) {
        copy(stored, out);
    } else {
        writeParameter(parameter, index, values, out);
    }
}

/// Without the secrets in its texts, if any are given.
void SceneText::copy(Node node, JsonWriter& out, const Redaction* secrets) const {
    using Type = JsonDocument::Type;
    const bool isObject = json_.type(node) == Type::OBJECT;
    switch (json_.type(node)) {
        case Type::NULL_VALUE:
            return out.null();
        case Type::STRING:
            return out.text(secrets == nullptr
                                ? std::string(json_.asString(node))
                                : secrets->without(std::string(json_.asString(node))));
        case Type::NUMBER:
            return out.number(json_.asString(node), 0);
        case Type::BOOL:
            return out.boolean(json_.asBool(node));
        default:
            break;
    }
    out.open(isObject ? '{' : '[');
    for (Node each = JsonDocument::firstChild(node); each != json_.behind(node);
         each = json_.behind(each)) {
        if (isObject) out.name(json_.name(each));
        copy(each, out, secrets);
    }
    out.close(isObject ? '}' : ']');
}

}  // namespace workbench
