#pragma once

// A load that changes nothing: the plugin loads in a child process, and what it wrote is carried
// out on a copy of what the store has. Made on the host's thread, used on one other.

#include <cstdint>
#include <stop_token>
#include <string>
#include <vector>

#include "workbench/cli/Options.h"
#include "workbench/cli/Redaction.h"
#include "workbench/cli/run/LiveInstance.h"
#include "workbench/cli/serve/dry_run_json.h"

namespace workbench {

class DryRun {
public:
    /// `secrets` are those of the whole scene.
    DryRun(lumo::Host& host, const LiveInstance& instance, const Options& options,
           const Redaction& secrets);

    /// Whether the instance has an SQL query that may change its database.
    bool mayWrite() const;

    /// Loads. Blocks until the child has ended; throws std::system_error.
    void load(const std::stop_token& stop);

    /// Whether the load has to do with a field: it sets it, an older load of the instance did, or
    /// the post-update action may ask for it.
    bool concerns(const cobalt::Field& field) const;

    /// Carries out on a copy of those fields what was loaded.
    void compareWith(const cobalt::Store& before);

    /// What came of it.
    std::string json();

private:
    bool isForSharedMemory() const { return settings_.mode == probe::TargetMode::SharedMemory; }
    void judge(int status, const std::string& errors);
    void compareMemory();
    void act(cobalt::Store& store);

    const lumo::ParameterTable& parameters_;
    const std::string plugin_;
    const int32_t fontEncoding_;
    const std::uint32_t writer_;
    lumo::Record record_;
    const probe::Settings settings_;
    Redaction redact_;
    const std::string action_;
    const std::optional<LiveInstance::SharedMemory> memory_;  // that it loads into
    const std::string memoryBefore_;                          // the text of it

    DryRunResult result_;
    cobalt::Store written_;  // by the script, into an empty store
};

}  // namespace workbench
