#pragma once

#include <cstdint>
#include <map>
#include <string>

#include "host/cobalt.h"
#include "host/lumo.h"
#include "workbench/cobaltlib/SceneStore.h"
#include "workbench/trace/Trace.h"

namespace cobaltlib {

/// What the library keeps for its whole process; the functions of host/cobalt.h reach it through
/// current(). There is one at a time. Owned by the Host; host's thread only.
class Library {
public:
    /// All are the host's, and outlive this object.
    Library(tracing::Trace& hostTrace, const int32_t& hostScene, const int32_t& calledContainer);
    ~Library();
    Library(const Library&) = delete;
    Library& operator=(const Library&) = delete;

    static Library& current();

    tracing::Trace& trace;
    const int32_t& scene;
    const int32_t& runningContainer;  // of the instance that is being called
    SceneStore store{trace};
    int32_t (*print)(const char* format, ...) = &_lumoprintf;
    int32_t initialisationPending = 0;
    std::map<const IDataHandler*, std::string> boundFields;  // the field that each handler binds to
};

}  // namespace cobaltlib
