#include "workbench/cli/serve/ServedScene.h"

#include <algorithm>
#include <exception>

#include "workbench/cli/probe_settings.h"
#include "workbench/cli/record_values.h"
#include "workbench/cli/scene_child.h"
#include "workbench/cli/serve/responses.h"

namespace workbench {

using serve::WebResponse;

namespace {

constexpr std::chrono::seconds patience{3};  // with jobs, when the workbench ends
constexpr const char* loginWasRefused =
    "The login was refused. It is not sent again for half a minute, unless it is changed: accounts "
    "lock after a few times.";

WebResponse nobodyWaits() {
    return refused(503, "Nobody waits for this any more.");
}

}  // namespace

void ServedScene::onFrame(const serve::Reply& reply, std::function<WebResponse()> answer) {
    auto call = [reply, answer = std::move(answer)] { reply(answer()); };
    if (!queue.post(std::move(call))) reply(busy());
}

void ServedScene::onInstance(const Call& call, std::function<void(LiveInstance&)> use) {
    auto find = [this, name = call.name(), reply = call.reply, use = std::move(use)] {
        LiveInstance* const instance = live.find(name);
        if (instance == nullptr) return reply(refused(404, "The scene has no such instance."));
        use(*instance);
    };
    if (!queue.post(std::move(find))) call.reply(busy());
}

bool ServedScene::addJob(WaitsFor kind, Jobs::Job job) {
    return jobs_[static_cast<std::size_t>(kind)].add(std::move(job));
}

bool ServedScene::addJob(WaitsFor kind, const serve::Reply& reply,
                         std::function<WebResponse(const std::stop_token&)> work) {
    auto answer = [reply, work = std::move(work)](const std::stop_token& stop) {
        try {
            reply(work(stop));
        } catch (const std::exception& error) {
            reply(refused(500, error.what()));
        }
    };
    const bool isTaken = addJob(kind, std::move(answer));
    if (!isTaken) reply(busy());
    return isTaken;
}

void ServedScene::addChildJob(const serve::Reply& reply, const std::stop_token& left,
                              std::function<WebResponse(const std::stop_token&)> work) {
    addJob(WaitsFor::Child, reply, [left, work = std::move(work)](const std::stop_token& stop) {
        if (left.stop_requested()) return nobodyWaits();
        std::stop_source either;
        const auto end = [&either] { either.request_stop(); };
        const std::stop_callback ends(stop, end);
        const std::stop_callback leaves(left, end);
        WebResponse response = work(either.get_token());
        return left.stop_requested() ? nobodyWaits() : response;  // told to who ended a half alone
    });
}

bool ServedScene::endJobs() {
    for (Jobs& jobs : jobs_)
        jobs.requestStop();
    const auto end = std::chrono::steady_clock::now() + patience;
    return std::all_of(jobs_.begin(), jobs_.end(),
                       [end](Jobs& jobs) { return jobs.waitUntil(end); });
}

std::optional<Redaction> ServedScene::redaction(const std::stop_token& stop) {
    return queue.ask<Redaction>([this] { return live.redaction(); }, stop);
}

std::shared_ptr<const cobalt::Store> ServedScene::copyOfStore(
    const std::function<bool(const cobalt::Field&)>& isWanted, const std::stop_token& stop) {
    using Copy = std::shared_ptr<const cobalt::Store>;
    auto copy = queue.ask<Copy>(
        [&] { return std::make_shared<cobalt::Store>(host.store.core().copyIf(isWanted)); }, stop);
    if (!copy) return nullptr;
    const cobalt::Store* const store = copy->get();
    const auto letGo = [this, kept = std::move(*copy)](const cobalt::Store*) mutable {
        queue.post([last = std::move(kept)] {});
    };
    return {store, letGo};
}

void ServedScene::askChild(const Call& call, LiveInstance& instance, const char* command,
                           std::vector<std::string> arguments) {
    const std::string login = loginOf(probeSettings(host.parameters, instance.shownValues()));
    if (refusedLogins_.isRefused(login)) return call.reply(refused(422, loginWasRefused));
    arguments.insert(arguments.end(), {"--out", "json"});
    SceneChild child{command, std::move(arguments),
                     sceneOf(instance.name(), host.parameters, instance.shownValues()),
                     options.plugin, options.fontEncoding};
    child.environment = live.variablesFor(instance);
    addChildJob(call.reply, call.request.left,
                [this, child = std::move(child), login](const std::stop_token& stop) {
                    const ChildAnswer answer = ask(child, stop);
                    refusedLogins_.note(login, answer);
                    return responseOf(answer);
                });
}

}  // namespace workbench
