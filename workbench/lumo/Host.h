#pragma once

// The state of the host process that the plugin's imports work on. There is one at a time; the
// functions of host/lumo.h and host/cobalt.h reach it through current().
// Owned by main (or by a test) and outlives every Instance; host's thread only.

#include <cstdint>

#include "workbench/cobaltlib/Library.h"
#include "workbench/lumo/Editor.h"
#include "workbench/lumo/Objects.h"
#include "workbench/lumo/ParameterTable.h"
#include "workbench/lumo/SharedMemories.h"
#include "workbench/trace/Trace.h"

namespace lumo {

class Host {
public:
    Host();
    ~Host();
    Host(const Host&) = delete;
    Host& operator=(const Host&) = delete;

    static Host& current();

    tracing::Trace trace;
    ParameterTable parameters;
    Editor editor;
    Objects objects;
    int32_t scene;
    int32_t runningContainer = noObject;  // of the instance that is being called
    SharedMemories memories;
    cobaltlib::Library library{trace, scene, runningContainer};
    cobaltlib::SceneStore& store = library.store;
    int32_t fontEncoding = 1;
    int64_t fontEncodingQueries =
        0;  // a plugin asks when it begins a load, which nothing else tells
};

}  // namespace lumo
