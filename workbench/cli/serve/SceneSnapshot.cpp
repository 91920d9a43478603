#include "workbench/cli/serve/SceneSnapshot.h"

#include <array>

#include "workbench/cli/JsonWriter.h"
#include "workbench/cli/UsageError.h"

namespace workbench {

namespace {

// In the order of SceneChange::Kind.
constexpr std::array kinds{"new", "changed", "gone", "renamed"};

void writeChange(const SceneChange& change, const Redaction& redact, JsonWriter& out) {
    out.open('{');
    out.member("instance", redact(change.instance));
    out.member("kind", kinds[static_cast<std::size_t>(change.kind)]);
    out.member("was", redact(change.was));
    out.name("parameters");
    out.open('[');
    for (const SceneChange::Value& value : change.values) {
        out.open('{');
        out.member("name", value.parameter);
        out.member("before", redact(value.before));
        out.member("after", redact(value.after));
        out.close('}');
    }
    out.close(']');
    out.close('}');
}

const std::string& textOf(const SceneContent& content) {
    static const std::string none = emptyScene;
    return content.text == nullptr ? none : *content.text;
}

}  // namespace

const char* SceneSnapshot::stateOnDisk() const {
    if (file.empty()) return "none";
    if (onDisk.text == nullptr) return "missing";
    return textOf(onDisk) == textOf(opened) ? "same" : "changed";
}

/// The file as it is now; as it was where it is no scene any more.
SceneText SceneSnapshot::textBefore() const {
    if (onDisk.text != nullptr) {
        try {
            return {name, *onDisk.text, parameters};
        } catch (const UsageError&) {
            return {name, textOf(opened), parameters};
        }
    }
    return {name, textOf(opened), parameters};
}

std::string SceneSnapshot::textToSave(bool withoutSecrets) const {
    return textBefore().with(instances, withoutSecrets);
}

std::string SceneSnapshot::json() const {
    const SceneText before =
        onDisk.text != nullptr ? textBefore() : SceneText(name, emptyScene, parameters);
    const SceneText known(name, textOf(opened), parameters);
    return jsonOf({name, stateOnDisk(), onDisk.stamp, before.changesBy(instances), known.notes()});
}

std::string SceneSnapshot::jsonBeside(const std::string& other, const SceneContent& content) const {
    const SceneText before(other, textOf(content), parameters);
    std::vector<ShownInstance> stored = instances;
    for (ShownInstance& instance : stored)
        instance.stored = instance.name;
    return jsonOf({other, content.text == nullptr ? "missing" : "changed", content.stamp,
                   before.changesBy(stored), lostFrom(before)});
}

/// What another file knows that this scene does not have: a sentence for each.
std::vector<std::string> SceneSnapshot::lostFrom(const SceneText& other) const {
    const auto kept = SceneText(name, textToSave(false), parameters).strangers();
    std::vector<std::string> lost;
    for (const auto& [what, json] : other.strangers()) {
        const auto same = kept.find(what);
        if (same == kept.end() || same->second != json)
            lost.push_back("A save here replaces " + what + ", which only the file knows.");
    }
    return lost;
}

std::string SceneSnapshot::jsonOf(const Compared& compared) const {
    JsonWriter out;
    out.open('{');
    out.member("file", compared.file);
    out.member("revision", revision);
    out.member("isSaved", compared.changes.empty() && onDisk.text != nullptr);
    out.member("onDisk", compared.onDisk);
    out.member("stamp", compared.stamp);
    out.member("locked", isLocked);
    out.name("changes");
    out.open('[');
    for (const SceneChange& change : compared.changes)
        writeChange(change, redact, out);
    out.close(']');
    out.name("notes");
    out.open('[');
    for (const std::string& note : compared.notes)
        out.text(redact(note));
    out.close(']');
    out.close('}');
    return out.take();
}

}  // namespace workbench
