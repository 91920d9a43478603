#pragma once

// What all that answers a page shares: the scene that runs, the way to the host's thread, and the
// jobs that take long.
// Owned by the Api, behind the server; answers that wait here go before it.

#include <array>
#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "workbench/cli/Options.h"
#include "workbench/cli/run/LiveScene.h"
#include "workbench/cli/serve/EventFeed.h"
#include "workbench/cli/serve/FrameQueue.h"
#include "workbench/cli/serve/Jobs.h"
#include "workbench/cli/serve/RefusedLogins.h"
#include "workbench/cli/serve/Routes.h"

namespace workbench {

/// What a job may have to wait for. Those of a kind have threads of their own, so that a server or
/// a disk that does not answer holds up no others. Reports are long, and read one after the other.
enum class WaitsFor { Child, Disk, Report, Nothing };

class ServedScene {
public:
    ServedScene(lumo::Host& theHost, LiveScene& scene, const Options& theOptions,
                serve::WebServer& server)
        : host(theHost), live(scene), options(theOptions), server_(server) {}

    lumo::Host& host;
    LiveScene& live;  // host's thread only
    const Options options;
    FrameQueue queue;
    EventFeed feed;
    double now = 0;  // of this frame; host's thread only

    /// Answers on the host's thread. Any thread.
    void onFrame(const serve::Reply& reply, std::function<serve::WebResponse()> answer);

    /// The same with the instance that the call names first; it answers by itself.
    void onInstance(const Call& call, std::function<void(LiveInstance&)> use);

    /// Answers on the thread of a job. False when there are too many, which is answered. Any
    /// thread.
    bool addJob(WaitsFor kind, const serve::Reply& reply,
                std::function<serve::WebResponse(const std::stop_token&)> work);

    /// A job with a child process, which is ended when nobody waits for the answer any more: when a
    /// stop of `left` is requested.
    void addChildJob(const serve::Reply& reply, const std::stop_token& left,
                     std::function<serve::WebResponse(const std::stop_token&)> work);

    /// A job that answers nobody. False when there are too many.
    bool addJob(WaitsFor kind, Jobs::Job job);

    /// Waits for the jobs, which use what is about to go. False when one does not come to its end,
    /// since a disk does not answer.
    bool endJobs();

    /// Answers with what a command of this program says of the instance, which looks at its source.
    /// Host's thread.
    void askChild(const Call& call, LiveInstance& instance, const char* command,
                  std::vector<std::string> arguments);

    /// What hides the secrets of all instances; nothing when a stop is requested. For jobs.
    std::optional<Redaction> redaction(const std::stop_token& stop);

    /// A copy of the fields of the store that are wanted; null when a stop is requested. It goes on
    /// the host's thread. For jobs.
    std::shared_ptr<const cobalt::Store> copyOfStore(
        const std::function<bool(const cobalt::Field&)>& isWanted, const std::stop_token& stop);

    /// Tells all pages of an event, whose members are given as JSON. Any thread.
    void publish(const std::string& members) { server_.publish(feed.add(members)); }

private:
    serve::WebServer& server_;
    RefusedLogins refusedLogins_;
    // By kind. The last member: they use all.
    std::array<Jobs, 4> jobs_{Jobs(4), Jobs(4), Jobs(1), Jobs(2)};
};

}  // namespace workbench
