#pragma once

#include <memory>
#include <string>

#include "workbench/cli/Options.h"
#include "workbench/cli/StandardStreams.h"
#include "workbench/cli/run/LiveScene.h"

namespace workbench {

/// What a run shows while it goes on, on standard error. Host's thread only.
class RunView {
public:
    virtual ~RunView() = default;

    /// Something befell a load. `advice` is on a file that is not there, else empty.
    virtual void tell(const LoadEvent& event, const std::string& advice, double now) = 0;

    /// Why an instance brings nothing.
    virtual void explain(const std::string& instance, const std::string& why, double now) = 0;

    /// Something befell the scene: a sentence.
    virtual void note(const std::string& sentence, double now) = 0;

    /// A frame has passed.
    virtual void frame(const LiveScene& scene, double now) = 0;

    /// The last one has.
    virtual void finish(const LiveScene& scene, double now) = 0;
};

/// One that keeps a line for each instance where a terminal shows it and nothing else writes there,
/// else one that prints a line for each event.
std::unique_ptr<RunView> makeRunView(const StandardStreams& streams, const Options& options);

}  // namespace workbench
