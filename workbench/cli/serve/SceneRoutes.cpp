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

bool isScene(const std::optional<std::string>& text) {
    if (!text || text->find("\"instances\"") == std::string::npos) return false;
    try {
        sceneIn(parseScene(*text, ""), "", [](std::string_view) { return false; });
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
    const auto text = contentOf(file);
    if (!isScene(text))
        return refused(422, isOwn ? "The scene file on disk is no scene any more, or cannot be "
                                    "read. Mend it, or save under another name."
                                  : "The file of this name is no scene; choose another name.");
    if (stampOf(text) == stamp) return std::nullopt;
    return refused(409, isOwn ? "The scene file has been changed on disk meanwhile."
                              : "There is a scene file of this name already.");
}

WebResponse ended() {
    return refused(503, "The workbench ends.");
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

void SceneRoutes::tell(const Call& call) {
    const std::string name = call.request.parameter("file");
    if (name.empty()) return served_.onFrame(call.reply, [this] { return ok(scene_.json()); });
    served_.addJob(call.reply,
                   [this, name](const std::stop_token& stop) { return besides(name, stop); });
}

WebResponse SceneRoutes::besides(const std::string& name, const std::stop_token& stop) {
    const auto file = folder_.find(name);
    if (!file) return refused(422, "The name leads out of the folder of the workbench.");
    const auto text = contentOf(file->string());
    if (text && !isScene(text)) return refused(422, name + " is no scene.");
    const auto compare = [&] {
        try {
            return ok(scene_.jsonBeside(name, text));
        } catch (const UsageError& error) {
            return refused(422, served_.live.redaction()(error.what()));
        }
    };
    return served_.queue.ask<WebResponse>(compare, stop).value_or(ended());
}

void SceneRoutes::tellFiles(const Call& call) {
    served_.addJob(call.reply, [this](const std::stop_token& stop) {
        const auto isWanted = [](const std::filesystem::path& file) {
            return isScene(contentOf(file.string()));
        };
        return ok(fileListJson(folder_.list({ending, longestScene, isWanted}, stop)));
    });
}

void SceneRoutes::open(const Call& call) {
    const std::string name = textIn(call.request.body, "file");
    served_.addJob(call.reply, [this, name](const std::stop_token& stop) {
        const std::string file = fileToOpen(name, stop);
        const auto text = contentOf(file);
        if (!text) return refused(422, "There is no such scene file: " + name);
        return served_.queue.ask<WebResponse>([&] { return opened(file, *text); }, stop)
            .value_or(ended());
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

WebResponse SceneRoutes::opened(const std::string& file, const std::string& text) {
    if (scene_.isLocked()) return refused(409, "The scene is locked.");
    if (scene_.isBeingSaved()) return busy();
    try {
        scene_.open(file, text);
    } catch (const UsageError& error) {
        return refused(422, served_.live.redaction()(error.what()));
    }
    for (const auto& instance : served_.live.instances())
        served_.publishEdited(*instance);
    return ok(scene_.json());
}

void SceneRoutes::lock(const Call& call) {
    const bool isLocked = isSetIn(call.request.body, "locked");
    served_.onFrame(call.reply, [this, isLocked] {
        scene_.lock(isLocked);
        return ok(scene_.json());
    });
}

void SceneRoutes::save(const Call& call) {
    const auto begin = [this, call] {
        const std::string file = fileToSave(textIn(call.request.body, "file"));
        if (auto refusal = refusesToSave(call.request.body, file)) return call.reply(*refusal);
        save(call, saveFor(call.request.body, file));
    };
    if (!served_.queue.post(begin)) call.reply(busy());
}

/// The scene's own without a name; empty where a scene may not be.
std::string SceneRoutes::fileToSave(const std::string& name) const {
    if (name.empty()) return scene_.file();
    const auto file = name.ends_with(ending) ? folder_.find(name) : std::nullopt;
    return file ? file->string() : "";
}

std::optional<WebResponse> SceneRoutes::refusesToSave(const std::string& body,
                                                      const std::string& file) const {
    const bool isNamed = !textIn(body, "file").empty();
    if (scene_.isLocked() && !isSetIn(body, "held"))
        return refused(423, "The scene is locked: hold the button to save nevertheless.");
    if (scene_.isBeingSaved()) return busy();
    if (file.empty() && !isNamed) return refused(422, "The scene has no file yet.");
    if (file.empty())
        return refused(422,
                       "A scene is saved in or below the folder of the workbench, in a file "
                       "whose name ends with .json.");
    return std::nullopt;
}

SceneRoutes::Save SceneRoutes::saveFor(const std::string& body, const std::string& file) const {
    Save save;
    save.file = file;
    save.isOwn = save.file == scene_.file();
    save.stamp = textIn(body, "stamp");
    const std::string withoutSecrets = scene_.textToSave(true);
    save.text = isSetIn(body, "withoutSecrets") ? withoutSecrets : scene_.textToSave(false);
    save.isPrivate = save.text != withoutSecrets;
    return save;
}

void SceneRoutes::save(const Call& call, const Save& save) {
    // What is written goes on what the file was when it was looked at last.
    const bool isSeen = !save.isOwn || save.stamp == scene_.stamp() || scene_.stamp() == "missing";
    if (!isSeen)
        return call.reply(refused(409, "The scene file has been changed on disk meanwhile."));
    scene_.setBeingSaved(true);
    const bool isBegun = served_.addJob(
        call.reply, [this, save](const std::stop_token& stop) { return write(save, stop); });
    if (!isBegun) scene_.setBeingSaved(false);
}

WebResponse SceneRoutes::write(const Save& save, const std::stop_token& stop) {
    std::optional<WebResponse> refusal;
    const auto isAllowed = [&] {
        refusal = refusesToReplace(save.file, save.isOwn, save.stamp);
        return !refusal;
    };
    try {
        if (isAllowed()) replaceFile(save.file, save.text, save.isPrivate, isAllowed);
    } catch (const std::system_error& error) {
        refusal = refused(422, "The scene cannot be written: " + error.code().message() + ".");
    }
    const auto finish = [&] {
        scene_.setBeingSaved(false);
        if (refusal) return *refusal;
        scene_.saved(save.file, save.text);
        return ok(scene_.json());
    };
    return served_.queue.ask<WebResponse>(finish, stop).value_or(ended());
}

}  // namespace workbench
