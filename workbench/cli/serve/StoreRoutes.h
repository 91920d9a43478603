#pragma once

#include "workbench/cli/serve/ServedScene.h"

namespace workbench {

/// Answers what a page asks of the store. Server's thread.
class StoreRoutes {
public:
    /// The scene outlives it.
    explicit StoreRoutes(ServedScene& served) : served_(served) {}

    void addTo(Routes& routes);

private:
    static const Route<StoreRoutes> table[2];

    void tellFields(const Call& call);
    void tellEntries(const Call& call);

    ServedScene& served_;
};

}  // namespace workbench
