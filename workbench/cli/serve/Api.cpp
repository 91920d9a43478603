#include "workbench/cli/serve/Api.h"

#include <algorithm>
#include <array>
#include <cstring>

#include "formats/json/JsonDocument.h"
#include "workbench/cli/JsonWriter.h"
#include "workbench/cli/one_load.h"
#include "workbench/cli/parameter_list.h"
#include "workbench/cli/record_values.h"
#include "workbench/cli/serve/instance_json.h"
#include "workbench/cli/serve/web_files.h"

namespace workbench {

namespace {

constexpr double secondsBetweenEvents = 0.1;
constexpr std::string_view instancesPath = "/api/v1/instances";

serve::WebResponse ok(std::string body) {
    serve::WebResponse response;
    response.body = std::move(body);
    return response;
}

serve::WebResponse busy() {
    return serve::refusal(503, "busy");
}

serve::WebResponse noInstance() {
    return serve::refusal(404, "The scene has no such instance.");
}

/// The member "token" of a JSON object; empty where there is none.
std::string tokenIn(const std::string& body) {
    intake::ByteBuffer text;
    std::memcpy(text.prepare(body.size() + 1), body.c_str(), body.size() + 1);
    text.commit(body.size() + 1);
    try {
        const intake::JsonDocument document(std::move(text));
        const auto token = document.find(intake::JsonDocument::ROOT, "token");
        return token == intake::JsonDocument::NONE ? "" : std::string(document.asString(token));
    } catch (const std::exception&) {
        return "";
    }
}

/// Whether a page has to be told: ages go on by themselves there.
bool isSame(const InstanceState& one, const InstanceState& other) {
    return one.name == other.name && one.state == other.state && one.records == other.records &&
           one.before == other.before && one.leftOver == other.leftOver && one.words == other.words;
}

/// The name of an instance in "/api/v1/instances/NAME/load"; nothing for another path.
std::optional<std::string> instanceIn(std::string_view path, std::string_view action) {
    const bool fits = path.starts_with(std::string(instancesPath) + "/") &&
                      path.ends_with("/" + std::string(action));
    const std::size_t around = instancesPath.size() + action.size() + 2;
    if (!fits || path.size() <= around) return std::nullopt;
    return serve::decoded(path.substr(instancesPath.size() + 1, path.size() - around), false);
}

}  // namespace

Api::Api(const lumo::Host& host, LiveScene& scene, const Options& options,
         std::unique_ptr<serve::WebServer> server)
    : host_(host),
      sceneFile_(options.scene),
      parameters_(parameterJson(host.parameters)),
      scene_(scene),
      gate_(server->port()),
      server_(std::move(server)),
      jobs_(host.fontEncoding, options.plugin) {
    server_->start(*this);
}

std::string Api::address() const {
    return "http://127.0.0.1:" + std::to_string(server_->port()) + "/#t=" + gate_.token();
}

std::string Api::about() const {
    JsonWriter out;
    out.open('{');
    out.name("program");
    out.text("intake-workbench");
    out.name("scene");
    out.text(sceneFile_);
    out.name("seq");
    out.number(static_cast<double>(feed_.last()));
    out.close('}');
    return out.take();
}

void Api::login(const serve::WebRequest& request, const serve::Reply& reply) const {
    reply(gate_.logIn(tokenIn(request.body)));
}

void Api::handle(const serve::WebRequest& request, serve::Reply reply) {
    if (auto refused = gate_.refusal(request, false)) return reply(std::move(*refused));
    const bool isGet = request.method == "GET" || request.method == "HEAD";
    if (serve::Gate::isLogin(request)) return login(request, reply);
    if (isGet && request.path == "/api/v1/about") return reply(ok(about()));
    if (isGet && request.path == "/api/v1/parameters") return reply(ok(parameters_));
    if (isGet && request.path == instancesPath)
        return onFrame(std::move(reply), [this] { return ok(statesJson(scene_.statesAt(now_))); });
    const auto loaded = instanceIn(request.path, "load");
    if (request.method == "POST" && loaded)
        return onFrame(std::move(reply), [this, name = *loaded] { return load(name); });
    const auto explained = instanceIn(request.path, "explain");
    if (request.method == "POST" && explained) {
        const bool isTaken =
            queue_.post([this, name = *explained, reply] { explain(name, reply); });
        return isTaken ? void() : reply(busy());
    }
    if (const WebFile* const file = isGet ? findWebFile(request.path) : nullptr) {
        serve::WebResponse response = ok(std::string(file->content));
        response.contentType = file->contentType;
        return reply(std::move(response));
    }
    reply(serve::refusal(404, "There is nothing at this address."));
}

void Api::onFrame(serve::Reply reply, std::function<serve::WebResponse()> answer) {
    auto call = [reply, answer = std::move(answer)] { reply(answer()); };
    if (!queue_.post(std::move(call))) reply(busy());
}

LiveInstance* Api::find(const std::string& name) const {
    const auto& instances = scene_.instances();
    const auto found = std::find_if(instances.begin(), instances.end(),
                                    [&](const auto& each) { return each->name() == name; });
    return found == instances.end() ? nullptr : found->get();
}

/// The answer comes when the child has ended.
void Api::explain(const std::string& name, const serve::Reply& reply) {
    const LiveInstance* const instance = find(name);
    if (instance == nullptr) return reply(noInstance());
    const auto done = [reply](std::string json) {
        reply(json.empty() ? serve::refusal(504, "There was no answer in time.")
                           : ok(std::move(json)));
    };
    const std::string scene = sceneOf(name, host_.parameters, instance->record());
    if (!jobs_.add(scene, done)) reply(busy());
}

serve::WebResponse Api::load(const std::string& name) {
    LiveInstance* const instance = find(name);
    if (instance == nullptr) return noInstance();
    instance->execAction(loadAction);
    serve::WebResponse response;
    response.status = 202;
    response.body = "{}\n";
    return response;
}

std::optional<serve::WebResponse> Api::refusesSocket(const serve::WebRequest& request) {
    if (auto refused = gate_.refusal(request, true)) return refused;
    if (request.path == "/api/v1/events") return std::nullopt;
    return serve::refusal(404, "There is nothing at this address.");
}

std::vector<std::string> Api::greeting(const serve::WebRequest& request) {
    const std::string since = request.parameter("since");
    return feed_.since(std::strtoull(since.c_str(), nullptr, 10));
}

void Api::runFrame(double now, const std::vector<LoadEvent>& events) {
    now_ = now;
    queue_.runFrame();
    hasNews_.resize(scene_.instances().size());
    for (const LoadEvent& event : events)
        hasNews_[event.instance] = true;
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
    if (changed.empty()) return;
    server_->publish(feed_.add("\"type\": \"instances\", \"instances\": " + statesJson(changed)));
}

}  // namespace workbench
