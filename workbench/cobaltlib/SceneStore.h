#pragma once

// The data store of the scene as the plugin sees it: a face over the store core that traces the
// calls, lets an observer watch, and reports a script that does not parse on the console.
// Owned by the Host; host's thread only.

#include <map>
#include <string>

#include "host/cobalt.h"
#include "workbench/cobalt/Store.h"
#include "workbench/cobaltlib/StoreField.h"
#include "workbench/cobaltlib/StoreObserver.h"
#include "workbench/trace/Trace.h"

namespace cobaltlib {

class SceneStore final : public Cobalt {
public:
    explicit SceneStore(tracing::Trace& trace) : trace_(trace) {}

    DataField* findField(const char* name, int32_t create, int32_t local) override;
    int32_t executeScript(const char* text, int32_t flags) override;

    /// Null for none.
    void setObserver(StoreObserver* observer) { observer_ = observer; }
    StoreObserver* observer() const { return observer_; }

    /// The face of a field, or null when the store has none of that name.
    StoreField* face(const std::string& name);

    cobalt::Store& core() { return core_; }
    const cobalt::Store& core() const { return core_; }

private:
    tracing::Trace& trace_;
    cobalt::Store core_;
    std::map<std::string, StoreField> faces_;  // made as they are asked for
    StoreObserver* observer_ = nullptr;
};

}  // namespace cobaltlib
