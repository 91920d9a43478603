// A plugin that registers nothing, as one does that has failed.

#include <cstdint>

#include "host/lumo.h"

PLUGIN_API void PLUGIN_INIT(void*) {}
PLUGIN_API void PLUGIN_INIT_FUNCTION(void*) {}
PLUGIN_API void PLUGIN_LOAD(void*) {}
PLUGIN_API void PLUGIN_AFTER_LOAD(void*) {}
PLUGIN_API void PLUGIN_CLEANUP_FUNCTION(void*) {}
PLUGIN_API void PLUGIN_EXEC_ACTION(void*, int32_t) {}
PLUGIN_API void PLUGIN_EXEC_PER_FIELD(void*) {}
PLUGIN_API void PLUGIN_DISPATCHER_CALLBACK(void*, int32_t, void*, void**) {}
PLUGIN_API void PLUGIN_CHANGED_CALLBACK(void*, int32_t) {}
PLUGIN_API void PLUGIN_GUI_STATUS(void*) {}
PLUGIN_API void PLUGIN_NEW_GEOM(void*, int32_t) {}
