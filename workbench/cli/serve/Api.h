#pragma once

// What the page asks of a scene that runs. Requests come on the server's thread, are answered there
// where they need nothing of the host, and else wait for the next frame.
// Owned by the command, which calls runFrame() on the host's thread.

#include <memory>
#include <vector>

#include "workbench/cli/Options.h"
#include "workbench/cli/run/LiveScene.h"
#include "workbench/cli/serve/EventFeed.h"
#include "workbench/cli/serve/ExplainJobs.h"
#include "workbench/cli/serve/FrameQueue.h"
#include "workbench/serve/Gate.h"
#include "workbench/serve/WebServer.h"

namespace workbench {

class Api final : public serve::WebHandler {
public:
    /// Begins to answer.
    Api(const lumo::Host& host, LiveScene& scene, const Options& options,
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
    void login(const serve::WebRequest& request, const serve::Reply& reply) const;
    std::string about() const;
    LiveInstance* find(const std::string& name) const;
    serve::WebResponse load(const std::string& name);
    void explain(const std::string& name, const serve::Reply& reply);
    void onFrame(serve::Reply reply, std::function<serve::WebResponse()> answer);
    void publishChanges(double now);

    const lumo::Host& host_;
    const std::string sceneFile_;
    const std::string parameters_;  // as JSON; they never change
    LiveScene& scene_;
    const serve::Gate gate_;
    std::unique_ptr<serve::WebServer> server_;
    FrameQueue queue_;  // what waits here, and with the jobs, goes before the server
    EventFeed feed_;
    double now_ = 0;
    double publishedAt_ = 0;
    std::vector<InstanceState> published_;
    std::vector<bool> hasNews_;
    ExplainJobs jobs_;
};

}  // namespace workbench
