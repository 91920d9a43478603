#pragma once

// What the page asks of a scene that runs. Requests come on the server's thread, are answered there
// where they need nothing of the host, and else wait for the next frame; what takes long is left to
// jobs in child processes.
// Owned by the command, which calls runFrame() on the host's thread.

#include <memory>
#include <vector>

#include "workbench/cli/Options.h"
#include "workbench/cli/run/LiveScene.h"
#include "workbench/cli/scene_child.h"
#include "workbench/cli/serve/DryRun.h"
#include "workbench/cli/serve/EventFeed.h"
#include "workbench/cli/serve/FrameQueue.h"
#include "workbench/cli/serve/Jobs.h"
#include "workbench/cli/serve/LoadLog.h"
#include "workbench/serve/Gate.h"
#include "workbench/serve/WebServer.h"

namespace workbench {

class Api final : public serve::WebHandler {
public:
    /// Begins to answer.
    Api(lumo::Host& host, LiveScene& scene, const Options& options,
        std::unique_ptr<serve::WebServer> server);
    ~Api() override { server_->stop(); }
    Api(const Api&) = delete;
    Api& operator=(const Api&) = delete;

    void handle(const serve::WebRequest& request, serve::Reply reply) override;
    std::optional<serve::WebResponse> refusesSocket(const serve::WebRequest& request) override;
    std::vector<std::string> greeting(const serve::WebRequest& request) override;

    /// Answers what waits, and tells the pages what has changed, ten times a second at most.
    void runFrame(double now, const std::vector<LoadEvent>& events);

    /// The address that lets in who opens it.
    std::string address() const;

private:
    /// A request, and what the star of its route's path stands for.
    struct Call {
        serve::WebRequest request;
        std::string name;
        serve::Reply reply;
    };

    struct Route {
        const char* method;
        const char* path;  // below /api/v1/; a star stands for one name
        void (Api::*answer)(const Call& call);
    };
    static const Route routes[];

    // On the server's thread:
    bool isRouted(const serve::WebRequest& request, const serve::Reply& reply);
    void logIn(const Call& call);
    void tellAbout(const Call& call);
    void tellParameters(const Call& call);
    void tellStates(const Call& call);
    void tellDetails(const Call& call);
    void edit(const Call& call);
    void load(const Call& call);
    void explain(const Call& call);
    void explore(const Call& call);
    void dryRun(const Call& call);
    void tellStore(const Call& call);
    void tellField(const Call& call);
    void tellLoads(const Call& call);

    // On the host's thread:
    void onFrame(const serve::Reply& reply, std::function<serve::WebResponse()> answer);
    void onInstance(const Call& call, std::function<void(LiveInstance&)> use);
    serve::WebResponse edited(LiveInstance& instance, const std::string& body);
    serve::WebResponse detailsOf(LiveInstance& instance);
    void askChild(const Call& call, LiveInstance& instance, const char* command,
                  std::vector<std::string> arguments);
    void publishChanges(double now);
    void publish(const std::string& members);

    void addJob(const serve::Reply& reply,
                std::function<serve::WebResponse(const std::stop_token&)>);

    // On the thread of a job:
    serve::WebResponse resultOf(DryRun& dryRun, const std::stop_token& stop);

    lumo::Host& host_;
    const Options options_;
    const std::string parameters_;  // as JSON; they never change
    LiveScene& scene_;
    const serve::Gate gate_;
    std::unique_ptr<serve::WebServer> server_;
    FrameQueue queue_;  // what waits here, and with the jobs, goes before the server
    EventFeed feed_;
    LoadLog loads_;
    double now_ = 0;
    double publishedAt_ = 0;
    std::vector<InstanceState> published_;
    std::vector<bool> hasNews_;
    Jobs jobs_;
};

}  // namespace workbench
