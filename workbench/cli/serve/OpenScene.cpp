#include "workbench/cli/serve/OpenScene.h"

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

}  // namespace

OpenScene::OpenScene(const lumo::Host& host, LiveScene& live, const StartFolder& folder,
                     const std::string& file, const std::string& text)
    : host_(host), live_(live), folder_(folder), text_(emptyScene) {
    if (!file.empty()) saved(file, text);
}

void OpenScene::saved(const std::string& file, const std::string& text) {
    file_ = file;
    text_ = text;
    disk_.follow(file_);
    noteStored();
    touch();
}

/// All instances are now in the file under their names.
void OpenScene::noteStored() {
    origins_.clear();
    for (const auto& instance : live_.instances())
        origins_[instance->writer()] = {instance->name(), instance->name()};
}

void OpenScene::open(const std::string& file, const std::string& text) {
    const SceneText scene(folder_.nameOf(file), text, host_.parameters);
    if (file == file_) {
        live_.take(scene.known());
    } else {
        live_.replace(scene.known());
    }
    saved(file, text);
}

void OpenScene::added(const LiveInstance& instance, const LiveInstance& like) {
    origins_[instance.writer()] = {"", origins_[like.writer()].like};
}

void OpenScene::lock(bool isLocked) {
    if (isLocked != isLocked_) touch();
    isLocked_ = isLocked;
}

void OpenScene::runFrame(double now) {
    if (disk_.runFrame(now)) touch();
}

const char* OpenScene::onDisk() const {
    if (file_.empty()) return "none";
    if (!disk_.text()) return "missing";
    return *disk_.text() == text_ ? "same" : "changed";
}

/// The file as it is now; as it was where it is no scene any more.
SceneText OpenScene::textBefore() const {
    if (disk_.text()) {
        try {
            return {name(), *disk_.text(), host_.parameters};
        } catch (const UsageError&) {
            return {name(), text_, host_.parameters};
        }
    }
    return {name(), text_, host_.parameters};
}

std::vector<ShownInstance> OpenScene::shown() const {
    std::vector<ShownInstance> shown;
    for (const auto& instance : live_.instances()) {
        const auto known = origins_.find(instance->writer());
        const Origin origin = known == origins_.end() ? Origin{} : known->second;
        shown.push_back({instance->name(), origin.stored, origin.like, instance->chosenValues()});
    }
    return shown;
}

std::string OpenScene::textToSave(bool withoutSecrets) const {
    return textBefore().with(shown(), withoutSecrets);
}

std::string OpenScene::json() const {
    const bool isThere = disk_.text().has_value();
    const SceneText before =
        isThere ? textBefore() : SceneText(name(), emptyScene, host_.parameters);
    return jsonOf(name(), onDisk(), disk_.stamp(), before.changesBy(shown()), notes());
}

std::string OpenScene::jsonBeside(const std::string& name,
                                  const std::optional<std::string>& text) const {
    const SceneText before(name, text.value_or(emptyScene), host_.parameters);
    std::vector<ShownInstance> instances = shown();
    for (ShownInstance& instance : instances)
        instance.stored = instance.name;
    return jsonOf(name, text ? "changed" : "missing", stampOf(text), before.changesBy(instances),
                  lostFrom(before));
}

/// What another file knows that this scene does not have: a sentence for each.
std::vector<std::string> OpenScene::lostFrom(const SceneText& other) const {
    const auto kept = SceneText(name(), textToSave(false), host_.parameters).strangers();
    std::vector<std::string> lost;
    for (const auto& [what, json] : other.strangers()) {
        const auto same = kept.find(what);
        if (same == kept.end() || same->second != json)
            lost.push_back("A save here replaces " + what + ", which only the file knows.");
    }
    return lost;
}

std::vector<std::string> OpenScene::notes() const {
    return SceneText(name(), text_, host_.parameters).notes();
}

std::string OpenScene::jsonOf(const std::string& name, const char* onDisk, const std::string& stamp,
                              const std::vector<SceneChange>& changes,
                              const std::vector<std::string>& notes) const {
    const Redaction redact = live_.redaction();
    JsonWriter out;
    out.open('{');
    out.member("file", name);
    out.member("revision", revision_);
    out.member("isSaved", changes.empty() && disk_.text().has_value());
    out.member("onDisk", onDisk);
    out.member("stamp", stamp);
    out.member("locked", isLocked_);
    out.name("changes");
    out.open('[');
    for (const SceneChange& change : changes)
        writeChange(change, redact, out);
    out.close(']');
    out.name("notes");
    out.open('[');
    for (const std::string& note : notes)
        out.text(redact(note));
    out.close(']');
    out.close('}');
    return out.take();
}

}  // namespace workbench
