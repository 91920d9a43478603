#include "workbench/cli/serve/Api.h"

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <set>

#include "workbench/cli/JsonWriter.h"
#include "workbench/cli/parameter_list.h"
#include "workbench/cli/run/LoadReport.h"
#include "workbench/cli/serve/request_body.h"
#include "workbench/cli/serve/responses.h"
#include "workbench/cli/serve/web_files.h"
#include "workbench/serve/secret.h"

namespace workbench {

namespace {

using serve::WebResponse;

constexpr double secondsBetweenEvents = 0.1;
constexpr std::size_t mostExplored = 1000;  // in one answer
constexpr const char* writesUnderLock =
    "The query may write to the database, and the scene is locked: open the lock first.";

/// What may write is not ended half-way, whoever leaves.
Call toItsEnd(Call call) {
    call.request.left = {};
    return call;
}

/// The scene file of the options, wherever links lead.
StoredScene storedScene(const std::string& file, const std::string& text,
                        const StartFolder& folder) {
    if (file.empty()) return {"", "", SceneContent(std::nullopt)};
    const std::string canonical = std::filesystem::weakly_canonical(file).string();
    return {canonical, folder.nameOf(canonical), SceneContent(text)};
}

}  // namespace

const Route<Api> Api::table[] = {
    {"POST", "session", &Api::logIn},
    {"GET", "about", &Api::tellAbout},
    {"GET", "parameters", &Api::tellParameters},
    {"POST", "instances/*/explain", &Api::explain},
    {"POST", "instances/*/dryrun", &Api::dryRun},
    {"GET", "instances/*/explore", &Api::explore},
};

Api::Api(lumo::Host& host, LiveScene& scene, const std::string& sceneText, const Options& options,
         std::unique_ptr<serve::WebServer> server)
    : parameters_(parameterJson(host.parameters)),
      started_(isoTime(std::chrono::system_clock::now())),
      gate_(server->port(), serve::sessionSecret(options.port)),
      server_(std::move(server)),
      served_(host, scene, options, *server_),
      scene_(host, scene, storedScene(options.scene, sceneText, folder_),
             [this](std::function<void()> look) {
                 return served_.addJob(
                     WaitsFor::Disk, [look = std::move(look)](const std::stop_token&) { look(); });
             }) {
    routes_.add(*this, table);
    instanceRoutes_.addTo(routes_);
    sceneRoutes_.addTo(routes_);
    historyRoutes_.addTo(routes_);
    reportRoutes_.addTo(routes_);
    storeRoutes_.addTo(routes_);
    plotRoutes_.addTo(routes_);
    server_->start(*this);
}

bool Api::end() {
    server_->stop();
    return served_.endJobs();
}

std::string Api::address() const {
    return "http://127.0.0.1:" + std::to_string(server_->port()) + "/#t=" + gate_.token();
}

void Api::handle(const serve::WebRequest& request, serve::Reply reply) {
    if (auto refusal = gate_.refusal(request, false)) return reply(std::move(*refusal));
    if (routes_.answer(request, reply)) return;
    const bool isGet = request.method == "GET" || request.method == "HEAD";
    const WebFile* const file = isGet ? findWebFile(request.path) : nullptr;
    if (file == nullptr) return reply(refused(404, "There is nothing at this address."));
    WebResponse response = ok(std::string(file->content));
    response.contentType = file->contentType;
    reply(std::move(response));
}

void Api::logIn(const Call& call) {
    call.reply(gate_.logIn(textIn(call.request.body, "token")));
}

void Api::tellAbout(const Call& call) {
    served_.onFrame(call.reply, [this] {
        JsonWriter out;
        out.open('{');
        out.member("program", "intake-workbench");
        out.member("version", programVersion());
        out.member("started", started_);
        out.member("scene", scene_.name());
        out.member("seq", served_.feed.last());
        out.close('}');
        return ok(out.take());
    });
}

void Api::tellParameters(const Call& call) {
    call.reply(ok(parameters_));
}

void Api::explain(const Call& call) {
    served_.onInstance(call, [this, call](LiveInstance& instance) {
        const bool mayWrite = isSetIn(call.request.body, "allowWrites");
        if (mayWrite && scene_.isLocked()) return call.reply(refused(423, writesUnderLock));
        if (mayWrite)
            return served_.askChild(toItsEnd(call), instance, "explain", {"--allow-writes"});
        served_.askChild(call, instance, "explain", {});
    });
}

void Api::explore(const Call& call) {
    served_.onInstance(call, [this, call](LiveInstance& instance) {
        const serve::WebRequest& request = call.request;
        const std::size_t limit = std::min(numberIn(request, "limit", mostExplored), mostExplored);
        std::vector<std::string> arguments{"--limit",
                                           std::to_string(std::max<std::size_t>(limit, 1)),
                                           "--from", std::to_string(numberIn(request, "from", 0))};
        if (request.parameter("count") == "1") arguments.emplace_back("--count-rows");
        for (const char* const name : {"at", "find"}) {
            const std::string value = request.parameter(name);
            if (!value.empty()) arguments.push_back("--" + std::string(name) + "=" + value);
        }
        served_.askChild(call, instance, "explore", std::move(arguments));
    });
}

void Api::dryRun(const Call& call) {
    served_.onInstance(call, [this, call](LiveInstance& instance) {
        const auto dryRun = std::make_shared<DryRun>(served_.host, instance, served_.options,
                                                     served_.live.redaction());
        const bool isAllowed = !dryRun->mayWrite() || isSetIn(call.request.body, "allowWrites");
        if (dryRun->mayWrite() && isAllowed && scene_.isLocked())
            return call.reply(refused(423, writesUnderLock));
        if (!isAllowed) return call.reply(ok("{\"outcome\": \"mayWrite\"}\n"));
        const Call lasting = dryRun->mayWrite() ? toItsEnd(call) : call;
        served_.addChildJob(
            call.reply, lasting.request.left,
            [this, dryRun](const std::stop_token& stop) { return resultOf(*dryRun, stop); });
    });
}

WebResponse Api::resultOf(DryRun& dryRun, const std::stop_token& stop) {
    dryRun.load(stop);
    const auto before = served_.copyOfStore(
        [&dryRun](const cobalt::Field& field) { return dryRun.concerns(field); }, stop);
    if (before == nullptr) return refused(503, "The workbench ends.");
    dryRun.compareWith(*before);
    return ok(dryRun.json());
}

std::optional<WebResponse> Api::refusesSocket(const serve::WebRequest& request) {
    if (auto refusal = gate_.refusal(request, true)) return refusal;
    if (request.path == "/api/v1/events") return std::nullopt;
    return refused(404, "There is nothing at this address.");
}

std::vector<std::string> Api::greeting(const serve::WebRequest& request) {
    return served_.feed.since(numberIn(request, "since", 0));
}

void Api::runFrame(double now, const std::vector<LoadEvent>& events) {
    served_.now = now;
    for (const LoadEvent& event : events) {
        news_.note(event.writer);
        ladders_.note(event, loads_.add(event), now);
        series_.add(event);
    }
    ladders_.runFrame(now);
    served_.queue.runFrame();
    scene_.runFrame(now);
    if (now - publishedAt_ >= secondsBetweenEvents) publishChanges(now);
}

void Api::publishChanges(double now) {
    publishedAt_ = now;
    // Loads first: what has just gone may have loaded, and another may come under its name.
    const std::string loads = loads_.takeNew();
    if (!loads.empty()) served_.publish("\"type\": \"loads\", \"loads\": " + loads);
    for (const std::string& event : news_.take(served_.live, now))
        served_.publish(event);
    publishScene();
}

void Api::publishScene() {
    if (scene_.revision() == publishedScene_) return;
    publishedScene_ = scene_.revision();
    std::set<std::uint32_t> writers;
    for (const auto& instance : served_.live.instances())
        writers.insert(instance->writer());
    loads_.keepOnly(writers);
    series_.keepOnly(writers);
    served_.publish("\"type\": \"scene\", \"revision\": " + std::to_string(publishedScene_));
}

}  // namespace workbench
