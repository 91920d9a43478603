#include "workbench/cli/serve/Api.h"

#include <algorithm>
#include <exception>

#include "formats/text/trim.h"
#include "workbench/cli/ExitStatus.h"
#include "workbench/cli/JsonWriter.h"
#include "workbench/cli/UsageError.h"
#include "workbench/cli/one_load.h"
#include "workbench/cli/parameter_list.h"
#include "workbench/cli/record_values.h"
#include "workbench/cli/serve/instance_json.h"
#include "workbench/cli/serve/path_match.h"
#include "workbench/cli/serve/request_body.h"
#include "workbench/cli/serve/secret_texts.h"
#include "workbench/cli/serve/store_view.h"
#include "workbench/cli/serve/web_files.h"
#include "workbench/serve/secret.h"

namespace workbench {

namespace {

using serve::WebResponse;

constexpr double secondsBetweenEvents = 0.1;
constexpr std::string_view root = "/api/v1/";

WebResponse ok(std::string body) {
    WebResponse response;
    response.body = std::move(body);
    return response;
}

/// With a sentence that may hold anything.
WebResponse refused(unsigned status, const std::string& sentence) {
    JsonWriter out;
    out.open('{');
    out.name("error");
    out.text(sentence);
    out.close('}');
    WebResponse response = ok(out.take());
    response.status = status;
    return response;
}

WebResponse busy() {
    return refused(503, "The workbench is busy; try again.");
}

WebResponse accepted() {
    WebResponse response = ok("{}\n");
    response.status = 202;
    return response;
}

/// What a child that prints JSON has answered.
WebResponse responseOf(const ChildAnswer& answer) {
    if (!answer.out.empty()) return ok(answer.out);
    const std::string error(intake::trimmed(answer.err, " \r\n"));
    const bool isLate =
        answer.status < 0 || answer.status == static_cast<int>(ExitStatus::NoAnswer);
    if (error.empty() || answer.status < 0) return refused(504, "There was no answer in time.");
    return refused(isLate ? 504 : 422, error);
}

/// Whether a page has to be told: ages go on by themselves there.
bool isSame(const InstanceState& one, const InstanceState& other) {
    return one.name == other.name && one.state == other.state && one.records == other.records &&
           one.before == other.before && one.leftOver == other.leftOver &&
           one.words == other.words && one.target == other.target;
}

constexpr const char* typeAnew = "Type what the dots hide anew.";

/// Puts back what was hidden from the page. False where that is not known any more.
bool restoreSecrets(EditRequest& request, const lumo::ParameterTable& parameters,
                    const LiveInstance& instance) {
    for (auto& [name, value] : request.values) {
        const auto index = parameters.find(name);
        if (!index || !lumo::isText(parameters.at(*index))) continue;
        const std::string present(instance.record().text(*index));
        const auto meant = meantText(parameters.at(*index), value, present, instance);
        if (!meant) return false;
        value = *meant;
    }
    return true;
}

constexpr std::size_t mostExplored = 1000;  // in one answer
constexpr std::size_t mostEntries = 200;

std::size_t numberIn(const serve::WebRequest& request, const char* name, std::size_t usual) {
    const std::string text = request.parameter(name);
    return text.empty() ? usual : std::strtoull(text.c_str(), nullptr, 10);
}

}  // namespace

const Api::Route Api::routes[] = {
    {"POST", "session", &Api::logIn},
    {"GET", "about", &Api::tellAbout},
    {"GET", "parameters", &Api::tellParameters},
    {"GET", "instances", &Api::tellStates},
    {"GET", "instances/*", &Api::tellDetails},
    {"PATCH", "instances/*", &Api::edit},
    {"POST", "instances/*/load", &Api::load},
    {"POST", "instances/*/explain", &Api::explain},
    {"POST", "instances/*/dryrun", &Api::dryRun},
    {"GET", "instances/*/explore", &Api::explore},
    {"GET", "store", &Api::tellStore},
    {"GET", "store/*", &Api::tellField},
    {"GET", "loads", &Api::tellLoads},
};

Api::Api(lumo::Host& host, LiveScene& scene, const Options& options,
         std::unique_ptr<serve::WebServer> server)
    : host_(host),
      options_(options),
      parameters_(parameterJson(host.parameters)),
      scene_(scene),
      gate_(server->port(), serve::sessionSecret(options.port)),
      server_(std::move(server)) {
    server_->start(*this);
}

std::string Api::address() const {
    return "http://127.0.0.1:" + std::to_string(server_->port()) + "/#t=" + gate_.token();
}

void Api::handle(const serve::WebRequest& request, serve::Reply reply) {
    if (auto refusal = gate_.refusal(request, false)) return reply(std::move(*refusal));
    if (isRouted(request, reply)) return;
    const bool isGet = request.method == "GET" || request.method == "HEAD";
    const WebFile* const file = isGet ? findWebFile(request.path) : nullptr;
    if (file == nullptr) return reply(refused(404, "There is nothing at this address."));
    WebResponse response = ok(std::string(file->content));
    response.contentType = file->contentType;
    reply(std::move(response));
}

bool Api::isRouted(const serve::WebRequest& request, const serve::Reply& reply) {
    if (!request.path.starts_with(root)) return false;
    const std::string_view path = std::string_view(request.path).substr(root.size());
    const std::string& method = request.method == "HEAD" ? "GET" : request.method;
    for (const Route& route : routes) {
        const auto name = method == route.method ? matchPath(route.path, path) : std::nullopt;
        if (!name) continue;
        (this->*route.answer)({request, *name, reply});
        return true;
    }
    return false;
}

void Api::logIn(const Call& call) {
    call.reply(gate_.logIn(textIn(call.request.body, "token")));
}

void Api::tellAbout(const Call& call) {
    JsonWriter out;
    out.open('{');
    out.name("program");
    out.text("intake-workbench");
    out.name("version");
    out.text(programVersion());
    out.name("scene");
    out.text(options_.scene);
    out.name("seq");
    out.number(static_cast<double>(feed_.last()));
    out.close('}');
    call.reply(ok(out.take()));
}

void Api::tellParameters(const Call& call) {
    call.reply(ok(parameters_));
}

void Api::onFrame(const serve::Reply& reply, std::function<WebResponse()> answer) {
    auto call = [reply, answer = std::move(answer)] { reply(answer()); };
    if (!queue_.post(std::move(call))) reply(busy());
}

void Api::onInstance(const Call& call, std::function<void(LiveInstance&)> use) {
    auto find = [this, name = call.name, reply = call.reply, use = std::move(use)] {
        LiveInstance* const instance = scene_.find(name);
        if (instance == nullptr) return reply(refused(404, "The scene has no such instance."));
        use(*instance);
    };
    if (!queue_.post(std::move(find))) call.reply(busy());
}

void Api::tellStates(const Call& call) {
    onFrame(call.reply, [this] { return ok(statesJson(scene_.statesAt(now_))); });
}

WebResponse Api::detailsOf(LiveInstance& instance) {
    instance.askWhatIsShown();
    return ok(detailsJson(host_, instance));
}

void Api::tellDetails(const Call& call) {
    onInstance(call,
               [this, reply = call.reply](LiveInstance& instance) { reply(detailsOf(instance)); });
}

void Api::edit(const Call& call) {
    onInstance(call, [this, call](LiveInstance& instance) {
        call.reply(edited(instance, call.request.body));
    });
}

WebResponse Api::edited(LiveInstance& instance, const std::string& body) {
    auto request = editRequestIn(body);
    if (!request) return refused(400, "The request names no revision, or nothing to set.");
    if (request->revision != instance.revision())
        return refused(409, "The instance has been changed meanwhile.");
    if (!restoreSecrets(*request, host_.parameters, instance)) return refused(422, typeAnew);
    try {
        instance.edit(request->values);
    } catch (const UsageError& error) {
        return refused(422, instance.redacted(error.what()));
    }
    if (instance.revision() != request->revision) {
        JsonWriter name(JsonWriter::Layout::OneLine);
        name.text(instance.name());
        publish("\"type\": \"edited\", \"name\": " + name.take() +
                ", \"revision\": " + std::to_string(instance.revision()));
    }
    return detailsOf(instance);
}

void Api::load(const Call& call) {
    onInstance(call, [reply = call.reply](LiveInstance& instance) {
        instance.execAction(loadAction);
        reply(accepted());
    });
}

void Api::addJob(const serve::Reply& reply,
                 std::function<WebResponse(const std::stop_token&)> work) {
    const bool isTaken = jobs_.add([reply, work = std::move(work)](const std::stop_token& stop) {
        try {
            reply(work(stop));
        } catch (const std::exception& error) {
            reply(refused(500, error.what()));
        }
    });
    if (!isTaken) reply(busy());
}

void Api::askChild(const Call& call, LiveInstance& instance, const char* command,
                   std::vector<std::string> arguments) {
    arguments.insert(arguments.end(), {"--out", "json"});
    SceneChild child{command, std::move(arguments),
                     sceneOf(instance.name(), host_.parameters, instance.values()), options_.plugin,
                     options_.fontEncoding};
    addJob(call.reply, [child = std::move(child)](const std::stop_token& stop) {
        return responseOf(ask(child, stop));
    });
}

void Api::explain(const Call& call) {
    onInstance(call, [this, call](LiveInstance& instance) {
        const bool mayWrite = isSetIn(call.request.body, "allowWrites");
        askChild(
            call, instance, "explain",
            mayWrite ? std::vector<std::string>{"--allow-writes"} : std::vector<std::string>());
    });
}

void Api::explore(const Call& call) {
    onInstance(call, [this, call](LiveInstance& instance) {
        const serve::WebRequest& request = call.request;
        const std::size_t limit = std::min(numberIn(request, "limit", mostExplored), mostExplored);
        std::vector<std::string> arguments{"--limit",
                                           std::to_string(std::max<std::size_t>(limit, 1))};
        for (const char* const name : {"at", "find"}) {
            const std::string value = request.parameter(name);
            if (!value.empty()) arguments.push_back("--" + std::string(name) + "=" + value);
        }
        askChild(call, instance, "explore", std::move(arguments));
    });
}

void Api::dryRun(const Call& call) {
    onInstance(call, [this, call](LiveInstance& instance) {
        const auto dryRun = std::make_shared<DryRun>(host_, instance, options_);
        const bool isAllowed = !dryRun->mayWrite() || isSetIn(call.request.body, "allowWrites");
        if (!isAllowed) return call.reply(ok("{\"outcome\": \"mayWrite\"}\n"));
        addJob(call.reply,
               [this, dryRun](const std::stop_token& stop) { return resultOf(*dryRun, stop); });
    });
}

WebResponse Api::resultOf(DryRun& dryRun, const std::stop_token& stop) {
    dryRun.load(stop);
    auto before = queue_.ask<std::shared_ptr<cobalt::Store>>(
        [this, &dryRun] {
            return std::make_shared<cobalt::Store>(host_.store.core().copyIf(
                [&dryRun](const cobalt::Field& field) { return dryRun.concerns(field); }));
        },
        stop);
    if (!before) return refused(503, "The workbench ends.");
    dryRun.compareWith(**before);
    queue_.post([kept = std::move(*before)] {});  // a copy goes on the thread of its store
    return ok(dryRun.json());
}

void Api::tellStore(const Call& call) {
    onFrame(call.reply, [this] { return ok(fieldsJson(host_.store.core(), scene_)); });
}

void Api::tellField(const Call& call) {
    onFrame(call.reply, [this, call] {
        const cobalt::Field* const field = host_.store.core().find(call.name);
        if (field == nullptr) return refused(404, "The store has no such field.");
        return ok(entriesJson(*field, scene_, numberIn(call.request, "from", 0),
                              numberIn(call.request, "count", mostEntries)));
    });
}

void Api::tellLoads(const Call& call) {
    onFrame(call.reply, [this] { return ok("{\"loads\": " + loads_.all() + "}\n"); });
}

std::optional<WebResponse> Api::refusesSocket(const serve::WebRequest& request) {
    if (auto refusal = gate_.refusal(request, true)) return refusal;
    if (request.path == "/api/v1/events") return std::nullopt;
    return refused(404, "There is nothing at this address.");
}

std::vector<std::string> Api::greeting(const serve::WebRequest& request) {
    return feed_.since(numberIn(request, "since", 0));
}

void Api::runFrame(double now, const std::vector<LoadEvent>& events) {
    now_ = now;
    queue_.runFrame();
    hasNews_.resize(scene_.instances().size());
    for (const LoadEvent& event : events) {
        hasNews_[event.instance] = true;
        loads_.add(event);
    }
    if (now - publishedAt_ >= secondsBetweenEvents) publishChanges(now);
}

void Api::publishChanges(double now) {
    publishedAt_ = now;
    std::vector<InstanceState> states = scene_.statesAt(now);
    std::vector<InstanceState> changed;
    for (std::size_t i = 0; i < states.size(); ++i) {
        const bool isKnown = i < published_.size() && isSame(states[i], published_[i]);
        if (!isKnown || hasNews_[i]) changed.push_back(states[i]);
    }
    std::fill(hasNews_.begin(), hasNews_.end(), false);
    published_ = std::move(states);
    if (!changed.empty()) publish("\"type\": \"instances\", \"instances\": " + statesJson(changed));
    const std::string loads = loads_.takeNew();
    if (!loads.empty()) publish("\"type\": \"loads\", \"loads\": " + loads);
}

void Api::publish(const std::string& members) {
    server_->publish(feed_.add(members));
}

}  // namespace workbench
