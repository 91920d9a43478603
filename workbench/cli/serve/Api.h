#pragma once

// What the page asks of a scene that runs. Requests come on the server's thread, are answered there
// where they need nothing of the host, and else wait for the next frame; what takes long is left to
// jobs in child processes.
// Owned by the command, which calls runFrame() on the host's thread.

#include <memory>
#include <vector>

#include "workbench/cli/serve/DryRun.h"
#include "workbench/cli/serve/HistoryRoutes.h"
#include "workbench/cli/serve/InstanceRoutes.h"
#include "workbench/cli/serve/Ladders.h"
#include "workbench/cli/serve/OpenScene.h"
#include "workbench/cli/serve/PlotRoutes.h"
#include "workbench/cli/serve/ReportRoutes.h"
#include "workbench/cli/serve/SceneRoutes.h"
#include "workbench/cli/serve/SeriesLog.h"
#include "workbench/cli/serve/ServedScene.h"
#include "workbench/cli/serve/StateNews.h"
#include "workbench/cli/serve/StoreRoutes.h"
#include "workbench/serve/Gate.h"
#include "workbench/serve/WebServer.h"

namespace workbench {

class Api final : public serve::WebHandler {
public:
    /// Begins to answer. `sceneText` is the scene file of the options as it was read.
    Api(lumo::Host& host, LiveScene& scene, const std::string& sceneText, const Options& options,
        std::unique_ptr<serve::WebServer> server);
    ~Api() override { end(); }
    Api(const Api&) = delete;
    Api& operator=(const Api&) = delete;

    void handle(const serve::WebRequest& request, serve::Reply reply) override;
    std::optional<serve::WebResponse> refusesSocket(const serve::WebRequest& request) override;
    std::vector<std::string> greeting(const serve::WebRequest& request) override;

    /// Answers what waits, and tells the pages what has changed, ten times a second at most.
    void runFrame(double now, const std::vector<LoadEvent>& events);

    /// Answers nothing any more, before it goes. False when a disk does not answer to a job, which
    /// goes on: then nothing that it uses may go.
    bool end();

    /// The address that lets in who opens it.
    std::string address() const;

private:
    static const Route<Api> table[6];

    // On the server's thread:
    void logIn(const Call& call);
    void tellAbout(const Call& call);
    void tellParameters(const Call& call);
    void explain(const Call& call);
    void explore(const Call& call);
    void dryRun(const Call& call);

    // On the host's thread:
    void publishChanges(double now);
    void publishScene();

    // On the thread of a job:
    serve::WebResponse resultOf(DryRun& dryRun, const std::stop_token& stop);

    const std::string parameters_;  // as JSON; they never change
    const std::string started_;     // when: tells it from the server before on this port
    const serve::Gate gate_;
    std::unique_ptr<serve::WebServer> server_;
    const StartFolder folder_;
    SeriesLog series_;
    StateNews news_;
    double publishedAt_ = -1;  // before the first frame
    ServedScene served_;
    LoadLog loads_{[this](std::uint32_t writer) { return served_.live.nameOfWriter(writer); }};
    OpenScene scene_;
    std::uint64_t publishedScene_ = scene_.revision();
    InstanceRoutes instanceRoutes_{served_, scene_};
    SceneRoutes sceneRoutes_{served_, folder_, scene_};
    HistoryRoutes historyRoutes_{served_, loads_};
    ReportRoutes reportRoutes_{served_, folder_};
    StoreRoutes storeRoutes_{served_};
    PlotRoutes plotRoutes_{served_, series_};
    Ladders ladders_{served_, loads_};
    Routes routes_;
};

}  // namespace workbench
