#pragma once

#include <string>
#include <vector>

#include "tests/faults/CannedServer.h"
#include "tests/support/TempDirectory.h"

namespace intake {

/// A load of one kind of source: the command text, whose source is small.
struct FaultLoad {
    std::string name;
    std::string command;
};

/// Sources of each kind, in files and on a server, for loads that something is to go wrong with.
class FaultSources {
public:
    /// Each has two rows that need some care, and so many plain ones.
    explicit FaultSources(int rows = 0);

    std::vector<FaultLoad> fromFiles() const;
    std::vector<FaultLoad> overHttp() const;
    FaultLoad byOdbc() const;

    /// The file of a load from one, by the load's name.
    std::string path(const std::string& name) const { return (directory_.path() / name).string(); }

private:
    TempDirectory directory_;
    CannedServer server_;
};

}  // namespace intake
