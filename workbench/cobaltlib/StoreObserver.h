#pragma once

#include <string_view>

#include "host/cobalt.h"
#include "workbench/cobalt/Origin.h"
#include "workbench/cobalt/ScriptError.h"

namespace cobaltlib {

/// Watches what the plugin does to a scene's store. Called on the host's thread, inside the
/// plugin's calls. Not owned by the store.
class StoreObserver {
public:
    virtual ~StoreObserver() = default;

    struct LookUp {
        DataField* field;
        bool traced;
    };

    /// The plugin asked for a field; `found` is the store's own, or null. Returns what the plugin
    /// gets to see, and whether the trace shows the question (and how the plugin got at the store).
    virtual LookUp lookedUp(std::string_view name, DataField* found) = 0;

    /// A script is about to be executed. Returns the origin of what it assigns.
    virtual cobalt::Origin executing() { return {}; }

    /// A script was executed; `error` is null when it succeeded.
    virtual void executed(std::string_view script, const cobalt::ScriptError* error) = 0;

    /// An action was executed; `error` is null when it succeeded.
    virtual void actionDone(const cobalt::ScriptError* /*error*/) {}
};

}  // namespace cobaltlib
