#pragma once

#include <string>

#include "pipeline/WorkerState.h"
#include "readers/Readers.h"
#include "tests/support/AsWorker.h"

namespace intake {

/// What a load ends with.
struct LoadResult {
    bool success = false;
    std::string script;
    std::string error;
};

/// A worker on the test's own thread.
class TestWorker {
public:
    LoadResult load(const std::string& command) {
        LoadResult result;
        state_.ProcessCommand(command, result.success, result.script, result.error);
        return result;
    }

    /// Ends what runs, from any thread.
    void end() { state_.endMark.set(); }

private:
    const AsWorker asWorker_;
    WorkerState state_{systemPlatform(), makerOfReaders(systemPlatform())};
};

}  // namespace intake
