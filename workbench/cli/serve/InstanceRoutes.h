#pragma once

#include <optional>
#include <string>

#include "workbench/cli/serve/OpenScene.h"
#include "workbench/cli/serve/ServedScene.h"
#include "workbench/cli/serve/request_body.h"

namespace workbench {

/// Answers what a page asks of the instances, and does what it wants of them. Server's thread.
class InstanceRoutes {
public:
    /// All outlive it.
    InstanceRoutes(ServedScene& served, OpenScene& scene) : served_(served), scene_(scene) {}

    void addTo(Routes& routes);

private:
    static const Route<InstanceRoutes> table[8];

    void tellStates(const Call& call);
    void tellDetails(const Call& call);
    void edit(const Call& call);
    void load(const Call& call);
    void discard(const Call& call);
    void add(const Call& call);
    void rename(const Call& call);
    void remove(const Call& call);

    // On the host's thread:
    serve::WebResponse detailsOf(LiveInstance& instance);
    serve::WebResponse edited(LiveInstance& instance, const std::string& body);
    void apply(const EditRequest& request, LiveInstance& instance);
    serve::WebResponse loaded(LiveInstance& instance, const std::string& body);
    serve::WebResponse discarded(LiveInstance& instance, const std::string& body);
    serve::WebResponse added(const std::string& body);
    std::optional<serve::WebResponse> refusesName(const std::string& name) const;

    ServedScene& served_;
    OpenScene& scene_;
};

}  // namespace workbench
