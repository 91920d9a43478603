#include "workbench/cli/serve/SceneRoutes.h"

#include <system_error>

#include "workbench/cli/UsageError.h"
#include "workbench/cli/replace_file.h"
#include "workbench/cli/serve/file_list.h"
#include "workbench/cli/serve/request_body.h"
#include "workbench/cli/serve/responses.h"

namespace workbench {

namespace {

using serve::WebResponse;

constexpr const char* ending = ".json";

bool isScene(const SceneContent& content) {
    if (content.text == nullptr || content.text->find("\"instances\"") == std::string::npos)
        return false;
    try {
        sceneIn(parseScene(*content.text, ""), "", [](std::string_view) { return false; });
        return true;
    } catch (const UsageError&) {
        return false;
    }
}

/// Why a file must not be written over; nothing when it may.
std::optional<WebResponse> refusesToReplace(const std::string& file, bool isOwn,
                                            const std::string& stamp) {
    std::error_code error;
    if (!std::filesystem::exists(file, error)) return std::nullopt;
    const SceneContent content = contentOf(file);
    if (!isScene(content))
        return refused(422, isOwn ? "The scene file on disk is no scene any more, or cannot be "
                                    "read. Mend it, or save under another name."
                                  : "The file of this name is no scene; choose another name.");
    if (content.stamp == stamp) return std::nullopt;
    return refused(409, isOwn ? "The scene file has been changed on disk meanwhile."
                              : "There is a scene file of this name already.");
}

/// How a file is to be written.
struct Manner {
    bool isOwn = false;  // it is the one that the scene is from
    std::string stamp;   // of the content that the user has seen there
    bool isPrivate = false;
};

/// Why it could not be; nothing when it is.
std::optional<WebResponse> written(const StoredScene& scene, const Manner& manner) {
    std::optional<WebResponse> refusal;
    const auto isAllowed = [&] {
        refusal = refusesToReplace(scene.file, manner.isOwn, manner.stamp);
        return !refusal;
    };
    try {
        if (isAllowed()) replaceFile(scene.file, *scene.content.text, manner.isPrivate, isAllowed);
    } catch (const std::system_error& error) {
        refusal = refused(422, "The scene cannot be written: " + error.code().message() + ".");
    }
    return refusal;
}

}  // namespace

const Route<SceneRoutes> SceneRoutes::table[] = {
    {"GET", "scene", &SceneRoutes::tell},       {"GET", "scene/files", &SceneRoutes::tellFiles},
    {"POST", "scene/open", &SceneRoutes::open}, {"POST", "scene/save", &SceneRoutes::save},
    {"POST", "lock", &SceneRoutes::lock},
};

void SceneRoutes::addTo(Routes& routes) {
    routes.add(*this, table);
}

void SceneRoutes::answer(const serve::Reply& reply) {
    served_.addJob(WaitsFor::Nothing, reply,
                   [scene = snapshot()](const std::stop_token&) { return ok(scene->json()); });
}

SceneRoutes::Outcome SceneRoutes::asked(std::function<Outcome()> call,
                                        const std::stop_token& stop) {
    return served_.queue.ask<Outcome>(std::move(call), stop)
        .value_or(Outcome{nullptr, refused(503, "The workbench ends.")});
}

WebResponse SceneRoutes::responseOf(const Outcome& outcome) {
    return outcome.refusal ? *outcome.refusal : ok(outcome.scene->json());
}

void SceneRoutes::tell(const Call& call) {
    const std::string name = call.request.parameter("file");
    if (!name.empty()) {
        served_.addJob(WaitsFor::Disk, call.reply,
                       [this, name](const std::stop_token& stop) { return besides(name, stop); });
    } else if (!served_.queue.post([this, reply = call.reply] { answer(reply); })) {
        call.reply(busy());
    }
}

WebResponse SceneRoutes::besides(const std::string& name, const std::stop_token& stop) {
    const auto file = folder_.find(name);
    if (!file) return refused(422, "The name leads out of the folder of the workbench.");
    const SceneContent content = contentOf(file->string());
    if (content.text != nullptr && !isScene(content)) return refused(422, name + " is no scene.");
    const Outcome outcome = asked([this] { return Outcome{snapshot(), {}}; }, stop);
    if (outcome.refusal) return *outcome.refusal;
    try {
        return ok(outcome.scene->jsonBeside(name, content));
    } catch (const UsageError& error) {
        return refused(422, outcome.scene->redact(error.what()));
    }
}

void SceneRoutes::tellFiles(const Call& call) {
    served_.addJob(WaitsFor::Disk, call.reply, [this](const std::stop_token& stop) {
        const auto isWanted = [](const std::filesystem::path& file) {
            return isScene(contentOf(file.string()));
        };
        return ok(fileListJson(folder_.list({ending, longestScene, isWanted}, stop)));
    });
}

void SceneRoutes::open(const Call& call) {
    const std::string name = textIn(call.request.body, "file");
    const auto known = revisionIn(call.request.body);
    served_.addJob(WaitsFor::Disk, call.reply, [this, name, known](const std::stop_token& stop) {
        const std::string file = fileToOpen(name, stop);
        const StoredScene scene{file, folder_.nameOf(file), contentOf(file)};
        if (scene.content.text == nullptr)
            return refused(422, "There is no such scene file: " + name);
        return opened(scene, known, stop);
    });
}

/// The scene's own is known wherever it lies; empty for one that is not there.
std::string SceneRoutes::fileToOpen(const std::string& name, const std::stop_token& stop) {
    const auto ownFile = [&] { return name == scene_.name() ? scene_.file() : std::string(); };
    const auto own = served_.queue.ask<std::string>(ownFile, stop);
    if (own && !own->empty()) return *own;
    const auto file = folder_.find(name);
    return file ? file->string() : "";
}

WebResponse SceneRoutes::opened(const StoredScene& scene, Revision known,
                                const std::stop_token& stop) {
    try {
        const SceneText text(scene.name, *scene.content.text, served_.host.parameters);
        return responseOf(asked([&] { return take(scene, text.known(), known); }, stop));
    } catch (const UsageError& error) {
        const auto redact = served_.redaction(stop);
        return refused(422, redact ? (*redact)(error.what()) : "The workbench ends.");
    }
}

SceneRoutes::Outcome SceneRoutes::take(const StoredScene& scene, const SceneFile& instances,
                                       Revision known) {
    if (scene_.isLocked()) return {nullptr, refused(409, "The scene is locked.")};
    if (scene_.isBeingSaved()) return {nullptr, busy()};
    if (auto refusal = refusesRevision(known, scene_.revision(), "The scene"))
        return {nullptr, std::move(refusal)};
    try {
        scene_.open(scene, instances);
    } catch (const UsageError& error) {
        return {nullptr, refused(422, served_.live.redaction()(error.what()))};
    }
    return {snapshot(), {}};
}

void SceneRoutes::lock(const Call& call) {
    const auto body = objectIn(call.request.body);
    const auto isLocked = body ? truthIn(*body, "locked") : std::nullopt;
    if (!isLocked)
        return call.reply(
            refused(400, "The request does not say whether to lock: {\"locked\": true}."));
    const auto turn = [this, reply = call.reply, isLocked] {
        scene_.lock(*isLocked);
        answer(reply);
    };
    if (!served_.queue.post(turn)) call.reply(busy());
}

/// Nothing where it is unclear what is wished for.
std::optional<SceneRoutes::Wish> SceneRoutes::wishIn(const std::string& text) {
    const auto body = objectIn(text);
    if (!body) return std::nullopt;
    const auto name = textIn(*body, "file", ""), stamp = textIn(*body, "stamp", "");
    const auto isHeld = truthIn(*body, "held", false);
    const auto isWithoutSecrets = truthIn(*body, "withoutSecrets", false);
    if (!name || !stamp || !isHeld || !isWithoutSecrets) return std::nullopt;
    return Wish{*name, *stamp, *isHeld, *isWithoutSecrets};
}

void SceneRoutes::save(const Call& call) {
    const auto wish = wishIn(call.request.body);
    if (!wish)
        return call.reply(
            refused(400,
                    "The request does not say how to save: {\"file\": \"shows/b.json\", "
                    "\"withoutSecrets\": true}."));
    served_.addJob(WaitsFor::Disk, call.reply,
                   [this, wish](const std::stop_token& stop) { return saved(*wish, stop); });
}

/// Empty where a scene may not be.
std::string SceneRoutes::fileToSave(const std::string& name) const {
    const auto file = name.ends_with(ending) ? folder_.find(name) : std::nullopt;
    return file ? file->string() : "";
}

std::optional<WebResponse> SceneRoutes::refusesToSave(const Wish& wish,
                                                      const std::string& file) const {
    if (scene_.isLocked() && !wish.isHeld)
        return refused(423, "The scene is locked: hold the button to save nevertheless.");
    if (scene_.isBeingSaved()) return busy();
    if (file.empty() && wish.name.empty()) return refused(422, "The scene has no file yet.");
    if (file.empty())
        return refused(422,
                       "A scene is saved in or below the folder of the workbench, in a file "
                       "whose name ends with .json.");
    // What is written goes on what the file was when it was looked at last.
    const bool isSeen =
        file != scene_.file() || wish.stamp == scene_.stamp() || scene_.stamp() == "missing";
    if (!isSeen) return refused(409, "The scene file has been changed on disk meanwhile.");
    return std::nullopt;
}

SceneRoutes::Outcome SceneRoutes::beginSave(const Wish& wish, const std::string& named) {
    const std::string& file = wish.name.empty() ? scene_.file() : named;
    if (auto refusal = refusesToSave(wish, file)) return {nullptr, std::move(refusal)};
    scene_.setBeingSaved(true);
    return {snapshot(), {}};
}

SceneRoutes::Outcome SceneRoutes::endSave(const StoredScene& scene,
                                          std::optional<WebResponse> refusal) {
    scene_.setBeingSaved(false);
    if (refusal) return {nullptr, std::move(refusal)};
    scene_.saved(scene);
    return {snapshot(), {}};
}

WebResponse SceneRoutes::saved(const Wish& wish, const std::stop_token& stop) {
    const std::string named = fileToSave(wish.name);
    const Outcome begun = asked([&] { return beginSave(wish, named); }, stop);
    if (begun.refusal) return *begun.refusal;
    std::optional<WebResponse> refusal;
    StoredScene scene{wish.name.empty() ? begun.scene->file : named, "", begun.scene->opened};
    try {
        scene.name = folder_.nameOf(scene.file);
        scene.content = SceneContent(begun.scene->textToSave(wish.isWithoutSecrets));
        const bool isPrivate = *scene.content.text != begun.scene->textToSave(true);
        refusal = written(scene, {scene.file == begun.scene->file, wish.stamp, isPrivate});
    } catch (const std::exception& error) {
        refusal = refused(500, error.what());
    }
    return responseOf(asked([&] { return endSave(scene, refusal); }, stop));
}

}  // namespace workbench
