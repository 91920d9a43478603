#include "workbench/cli/serve/InstanceRoutes.h"

#include <algorithm>

#include "workbench/cli/UsageError.h"
#include "workbench/cli/one_load.h"
#include "workbench/cli/record_values.h"
#include "workbench/cli/serve/instance_json.h"
#include "workbench/cli/serve/responses.h"
#include "workbench/cli/serve/secret_texts.h"

namespace workbench {

namespace {

using serve::WebResponse;

constexpr const char* typeAnew = "Type what the dots hide anew.";

/// Puts back what was hidden from the page. False where that is not known any more.
bool restoreSecrets(EditRequest& request, const lumo::ParameterTable& parameters,
                    const LiveInstance& instance) {
    const lumo::Record shown = instance.shownValues();
    for (auto& [name, value] : request.values) {
        const auto index = parameters.find(name);
        if (!index || !lumo::isText(parameters.at(*index))) continue;
        const std::string present(shown.text(*index));
        const auto meant =
            meantText(parameters.at(*index), value, present, instance.presentRedaction());
        if (!meant) return false;
        value = *meant;
    }
    return true;
}

/// What an address and a log can tell apart.
bool isName(const std::string& name) {
    constexpr std::size_t longest = 100;
    const auto isControl = [](char c) { return static_cast<unsigned char>(c) < 0x20 || c == 0x7F; };
    return !name.empty() && name.size() <= longest && name != "." && name != ".." &&
           std::none_of(name.begin(), name.end(), isControl);
}

/// What becomes another, or is dropped, has to be what the page shows.
std::optional<WebResponse> refusesRevision(std::optional<std::uint64_t> known,
                                           const LiveInstance& instance) {
    return workbench::refusesRevision(known, instance.revision(), "The instance");
}

/// What the page's own change has made of the revision that it named.
std::string revisionJson(const LiveInstance& instance) {
    return "{\"revision\": " + std::to_string(instance.revision()) + "}\n";
}

WebResponse locked() {
    return refused(423, "The scene is locked.");
}

}  // namespace

const Route<InstanceRoutes> InstanceRoutes::table[] = {
    {"GET", "instances", &InstanceRoutes::tellStates},
    {"POST", "instances", &InstanceRoutes::add},
    {"GET", "instances/*", &InstanceRoutes::tellDetails},
    {"PATCH", "instances/*", &InstanceRoutes::edit},
    {"DELETE", "instances/*", &InstanceRoutes::remove},
    {"POST", "instances/*/load", &InstanceRoutes::load},
    {"POST", "instances/*/discard", &InstanceRoutes::discard},
    {"POST", "instances/*/rename", &InstanceRoutes::rename},
};

void InstanceRoutes::addTo(Routes& routes) {
    routes.add(*this, table);
}

void InstanceRoutes::tellStates(const Call& call) {
    served_.onFrame(call.reply,
                    [this] { return ok(statesJson(served_.live.statesAt(served_.now))); });
}

WebResponse InstanceRoutes::detailsOf(LiveInstance& instance) {
    instance.askWhatIsShown();
    return ok(detailsJson(served_.host, instance));
}

void InstanceRoutes::tellDetails(const Call& call) {
    served_.onInstance(call,
                       [this, call](LiveInstance& instance) { call.reply(detailsOf(instance)); });
}

void InstanceRoutes::edit(const Call& call) {
    served_.onInstance(call, [this, call](LiveInstance& instance) {
        call.reply(edited(instance, call.request.body));
    });
}

WebResponse InstanceRoutes::edited(LiveInstance& instance, const std::string& body) {
    auto request = editRequestIn(body);
    if (!request) return refused(400, "The request names no revision, or nothing to set.");
    if (auto refusal = refusesRevision(request->revision, instance)) return *refusal;
    if (!restoreSecrets(*request, served_.host.parameters, instance)) return refused(422, typeAnew);
    try {
        apply(*request, instance);
    } catch (const UsageError& error) {
        return refused(422, instance.redacted(error.what()));
    }
    if (instance.revision() != request->revision) scene_.touch();
    return detailsOf(instance);
}

void InstanceRoutes::apply(const EditRequest& request, LiveInstance& instance) {
    if (scene_.isLocked() || instance.isDraft()) return instance.editDraft(request.values);
    instance.edit(request.values);
}

void InstanceRoutes::load(const Call& call) {
    served_.onInstance(call, [this, call](LiveInstance& instance) {
        call.reply(loaded(instance, call.request.body));
    });
}

WebResponse InstanceRoutes::loaded(LiveInstance& instance, const std::string& body) {
    if (scene_.isLocked() && !isSetIn(body, "held"))
        return refused(423, "The scene is locked: hold the button to load nevertheless.");
    const bool isDraft = instance.isDraft();
    if (isDraft) {
        if (auto refusal = refusesRevision(revisionIn(body), instance)) return *refusal;
        instance.useDraft();
        scene_.touch();
    }
    instance.execAction(loadAction);
    return isDraft ? accepted(revisionJson(instance)) : accepted();
}

void InstanceRoutes::discard(const Call& call) {
    served_.onInstance(call, [this, call](LiveInstance& instance) {
        call.reply(discarded(instance, call.request.body));
    });
}

WebResponse InstanceRoutes::discarded(LiveInstance& instance, const std::string& body) {
    if (auto refusal = refusesRevision(revisionIn(body), instance)) return *refusal;
    if (instance.isDraft()) {
        instance.discardDraft();
        scene_.touch();
    }
    return detailsOf(instance);
}

std::optional<WebResponse> InstanceRoutes::refusesName(const std::string& name) const {
    if (scene_.isLocked()) return locked();
    if (scene_.isBeingSaved()) return busy();
    if (!isName(name)) return refused(422, "A name has from 1 to 100 bytes, in one line.");
    if (served_.live.find(name) == nullptr) return std::nullopt;
    return refused(422, "Another instance already has this name.");
}

void InstanceRoutes::add(const Call& call) {
    served_.onFrame(call.reply, [this, call] { return added(call.request.body); });
}

WebResponse InstanceRoutes::added(const std::string& body) {
    const std::string name = textIn(body, "name");
    const std::string like = textIn(body, "like");
    if (auto refusal = refusesName(name)) return *refusal;
    const LiveInstance* const model = served_.live.find(like);
    if (!like.empty() && model == nullptr)
        return refused(422, "The scene has no instance \"" + like + "\" to copy.");
    const lumo::Record defaults(served_.host.parameters);
    LiveInstance& instance =
        served_.live.add(name, model == nullptr ? defaults : *model->chosenValues());
    if (model != nullptr) scene_.added(instance, *model);
    scene_.touch();
    WebResponse response = detailsOf(instance);
    response.status = 201;
    return response;
}

void InstanceRoutes::rename(const Call& call) {
    served_.onInstance(call, [this, call](LiveInstance& instance) {
        const std::string& body = call.request.body;
        const std::string name = textIn(body, "name");
        if (auto refusal = refusesName(name)) return call.reply(*refusal);
        if (auto refusal = refusesRevision(revisionIn(body), instance)) return call.reply(*refusal);
        served_.live.rename(instance, name);
        scene_.touch();
        call.reply(detailsOf(instance));
    });
}

void InstanceRoutes::remove(const Call& call) {
    served_.onInstance(call, [this, call](const LiveInstance& instance) {
        if (scene_.isLocked()) return call.reply(locked());
        if (scene_.isBeingSaved()) return call.reply(busy());
        if (auto refusal = refusesRevision(revisionIn(call.request.body), instance))
            return call.reply(*refusal);
        served_.live.remove(instance);
        scene_.touch();
        call.reply(ok("{}\n"));
    });
}

}  // namespace workbench
